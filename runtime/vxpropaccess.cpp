#include "vxpropaccess.h"

#include "vxpropinfolist.h"

#include <QtCore/QMetaProperty>
#include <QtGui/QFontDatabase>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QAction>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolBox>
#include <QtWidgets/QTreeWidget>

namespace {

const char charSetProperty[] = "vxCharSet";
constexpr int DefaultCharSet = 1;

QMetaProperty metaProperty(const QObject *object, const QString &name)
{
    const TvxPropInfo *info = TvxPropInfoList::findProperty(object, name);
    if (!info || info->metaIndex < 0)
        return QMetaProperty();
    return object->metaObject()->property(info->metaIndex);
}

QTextDocument *documentOf(const QObject *object)
{
    if (auto *plain = qobject_cast<const QPlainTextEdit *>(object))
        return plain->document();
    if (auto *rich = qobject_cast<const QTextEdit *>(object))
        return rich->document();
    return nullptr;
}

QStringList documentLines(const QTextDocument *doc)
{
    QStringList lines;
    if (doc->isEmpty())
        return lines;
    for (QTextBlock b = doc->begin(); b.isValid(); b = b.next())
        lines.append(b.text());
    return lines;
}

QFontDatabase::WritingSystem writingSystemOf(int charSet)
{
    switch (charSet) {
    case 2: return QFontDatabase::Symbol;
    case 128: return QFontDatabase::Japanese;
    case 129:
    case 130: return QFontDatabase::Korean;
    case 134: return QFontDatabase::SimplifiedChinese;
    case 136: return QFontDatabase::TraditionalChinese;
    case 161: return QFontDatabase::Greek;
    case 162:
    case 186:
    case 238: return QFontDatabase::Latin;
    case 163: return QFontDatabase::Vietnamese;
    case 177: return QFontDatabase::Hebrew;
    case 178: return QFontDatabase::Arabic;
    case 204: return QFontDatabase::Cyrillic;
    case 222: return QFontDatabase::Thai;
    default: return QFontDatabase::Any; // ANSI, DEFAULT, MAC, OEM: Unicode needs nothing
    }
}

// Gives @p font a fallback family covering @p charSet's writing system
// when its own family does not.
void coverCharSet(QFont &font, int charSet)
{
    const QFontDatabase::WritingSystem ws = writingSystemOf(charSet);
    if (ws == QFontDatabase::Any)
        return;
    const QString family = font.family();
    if (QFontDatabase::writingSystems(family).contains(ws))
        return;
    const QStringList candidates = QFontDatabase::families(ws);
    if (!candidates.isEmpty())
        font.setFamilies({family, candidates.first()});
}


// The captions and hints of the common widgets are read and written
// without going through QVariant: a language switch touches little else.
// Each returns false when the object is none of those widgets.
enum class Direct { Text, ToolTip, Title, None };

Direct directKind(const QString &property)
{
    if (property == QLatin1String("text"))
        return Direct::Text;
    if (property == QLatin1String("toolTip"))
        return Direct::ToolTip;
    if (property == QLatin1String("title"))
        return Direct::Title;
    return Direct::None;
}

bool directRead(const QObject *object, Direct kind, QString *value)
{
    switch (kind) {
    case Direct::Text:
        if (auto *b = qobject_cast<const QAbstractButton *>(object))
            return *value = b->text(), true;
        if (auto *l = qobject_cast<const QLabel *>(object))
            return *value = l->text(), true;
        if (auto *a = qobject_cast<const QAction *>(object))
            return *value = a->text(), true;
        return false;
    case Direct::ToolTip:
        if (object->isWidgetType())
            return *value = static_cast<const QWidget *>(object)->toolTip(), true;
        if (auto *a = qobject_cast<const QAction *>(object))
            return *value = a->toolTip(), true;
        return false;
    case Direct::Title:
        if (auto *g = qobject_cast<const QGroupBox *>(object))
            return *value = g->title(), true;
        return false;
    case Direct::None:
        return false;
    }
    return false;
}

// A button's setText() replaces its shortcut by the new text's mnemonic.
// A shortcut that is not the old text's mnemonic was set on purpose (Esc on
// a Close button) and stays; a mnemonic follows the new text.
void setButtonText(QAbstractButton *button, const QString &text)
{
#ifndef QT_NO_SHORTCUT
    const QKeySequence shortcut = button->shortcut();
    const bool own = !shortcut.isEmpty() && shortcut != QKeySequence::mnemonic(button->text());
    button->setText(text);
    if (own)
        button->setShortcut(shortcut);
#else
    button->setText(text);
#endif
}

// The concrete setter of a resolved target.
enum Setter { ByMeta, ButtonText, LabelText, ActionText, WidgetToolTip, ActionToolTip, GroupTitle };

Setter setterOf(const QObject *object, Direct kind)
{
    switch (kind) {
    case Direct::Text:
        if (qobject_cast<const QAbstractButton *>(object))
            return ButtonText;
        if (qobject_cast<const QLabel *>(object))
            return LabelText;
        if (qobject_cast<const QAction *>(object))
            return ActionText;
        return ByMeta;
    case Direct::ToolTip:
        if (object->isWidgetType())
            return WidgetToolTip;
        if (qobject_cast<const QAction *>(object))
            return ActionToolTip;
        return ByMeta;
    case Direct::Title:
        return qobject_cast<const QGroupBox *>(object) ? GroupTitle : ByMeta;
    case Direct::None:
        return ByMeta;
    }
    return ByMeta;
}

// The item list of a combo box or list widget and the lines of a text edit
// have no property of their own; on any other class a property of that name
// is an ordinary string-list property.
bool isItemsOf(const QObject *object, const QString &property)
{
    return property.compare(QLatin1String("Items"), Qt::CaseInsensitive) == 0
        && ((qobject_cast<const QComboBox *>(object) && !qobject_cast<const QFontComboBox *>(object))
            || qobject_cast<const QListWidget *>(object));
}

bool isLinesOf(const QObject *object, const QString &property)
{
    return property.compare(QLatin1String("Lines"), Qt::CaseInsensitive) == 0 && documentOf(object);
}

} // namespace

namespace TvxPropAccess {

QString readString(const QObject *object, const QString &property)
{
    QString value;
    if (directRead(object, directKind(property), &value))
        return value;
    const QMetaProperty p = metaProperty(object, property);
    return p.isValid() ? p.read(object).toString() : QString();
}

bool writeString(QObject *object, const QString &property, const QString &value)
{
    if (readString(object, property) == value)
        return false;
    return writeString(stringTarget(object, property), value);
}

StringTarget stringTarget(QObject *object, const QString &property)
{
    return StringTarget{object, property, object ? setterOf(object, directKind(property)) : ByMeta};
}

bool writeString(const StringTarget &target, const QString &value)
{
    QObject *object = target.object;
    if (!object)
        return false;
    // The classes were checked when the target was resolved. Buttons,
    // labels, actions and group boxes compare a new text with their own and
    // do nothing when it is the same; the other setters are compared here.
    switch (Setter(target.setter)) {
    case ButtonText:
        setButtonText(static_cast<QAbstractButton *>(object), value);
        return true;
    case LabelText:
        static_cast<QLabel *>(object)->setText(value);
        return true;
    case ActionText:
        static_cast<QAction *>(object)->setText(value);
        return true;
    case WidgetToolTip: {
        auto *w = static_cast<QWidget *>(object);
        if (w->toolTip() == value)
            return false;
        w->setToolTip(value);
        return true;
    }
    case ActionToolTip:
        static_cast<QAction *>(object)->setToolTip(value);
        return true;
    case GroupTitle:
        static_cast<QGroupBox *>(object)->setTitle(value);
        return true;
    case ByMeta:
        break;
    }
    const QMetaProperty p = metaProperty(object, target.property);
    if (!p.isValid() || p.read(object).toString() == value)
        return false;
    return p.write(object, value);
}

QStringList readLines(const QObject *object, const QString &property)
{
    if (isItemsOf(object, property)) {
        QStringList lines;
        if (auto *combo = qobject_cast<const QComboBox *>(object)) {
            for (int i = 0; i < combo->count(); ++i)
                lines.append(combo->itemText(i));
        } else if (auto *list = qobject_cast<const QListWidget *>(object)) {
            for (int i = 0; i < list->count(); ++i)
                lines.append(list->item(i)->text());
        }
        return lines;
    }
    if (isLinesOf(object, property))
        return documentLines(documentOf(object));
    const QMetaProperty p = metaProperty(object, property);
    return p.isValid() ? p.read(object).toStringList() : QStringList();
}

void writeLines(QObject *object, const QString &property, const QStringList &lines)
{
    if (isItemsOf(object, property)) {
        if (auto *combo = qobject_cast<QComboBox *>(object)) {
            const int current = combo->currentIndex();
            for (int j = 0; j < lines.size(); ++j) {
                if (j < combo->count())
                    combo->setItemText(j, lines.at(j));
                else
                    combo->addItem(lines.at(j));
            }
            while (combo->count() > lines.size())
                combo->removeItem(combo->count() - 1);
            combo->setCurrentIndex(current);
        } else if (auto *list = qobject_cast<QListWidget *>(object)) {
            for (int j = 0; j < lines.size(); ++j) {
                if (j < list->count())
                    list->item(j)->setText(lines.at(j));
                else
                    list->addItem(lines.at(j));
            }
            while (list->count() > lines.size())
                delete list->takeItem(list->count() - 1);
        }
        return;
    }
    if (isLinesOf(object, property)) {
        QTextDocument *doc = documentOf(object);
        if (documentLines(doc) == lines)
            return;
        // A text edit holds one document; its lines are its blocks.
        if (auto *plain = qobject_cast<QPlainTextEdit *>(object))
            plain->setPlainText(lines.join(QLatin1Char('\n')));
        else if (auto *rich = qobject_cast<QTextEdit *>(object))
            rich->setPlainText(lines.join(QLatin1Char('\n')));
        return;
    }
    const QMetaProperty p = metaProperty(object, property);
    if (p.isValid() && p.read(object).toStringList() != lines)
        p.write(object, lines);
}

bool hasFont(const QObject *object)
{
    const QMetaProperty p = metaProperty(object, QStringLiteral("font"));
    return p.isValid() && p.metaType().id() == QMetaType::QFont;
}

QFont readFont(const QObject *object)
{
    return metaProperty(object, QStringLiteral("font")).read(object).value<QFont>();
}

void writeFont(QObject *object, const QFont &font)
{
    const QMetaProperty p = metaProperty(object, QStringLiteral("font"));
    if (p.isValid())
        p.write(object, font);
}

int readCharSet(const QObject *object)
{
    if (object->dynamicPropertyNames().isEmpty())
        return DefaultCharSet; // cheaper than looking the property up by name
    bool ok = false;
    const int value = object->property(charSetProperty).toInt(&ok);
    return ok ? value : DefaultCharSet;
}

void applyFont(QObject *object, const QString &family, int charSet)
{
    if (!hasFont(object))
        return;
    const QFont current = readFont(object);
    QFont font = current;
    if (charSet >= 0 && readCharSet(object) != charSet)
        object->setProperty(charSetProperty, charSet);
    if (!family.isEmpty() && font.family() != family)
        font.setFamily(family);
    coverCharSet(font, readCharSet(object));
    if (font.families() != current.families() || font.family() != current.family())
        writeFont(object, font);
}

int collectionCount(const QObject *object, const QString &collection)
{
    const QString c = collection.toUpper();
    if (c == QLatin1String("COLUMNS")) {
        if (auto *tree = qobject_cast<const QTreeWidget *>(object))
            return tree->columnCount();
        if (auto *table = qobject_cast<const QTableWidget *>(object))
            return table->columnCount();
    } else if (c == QLatin1String("TABS")) {
        if (auto *tabs = qobject_cast<const QTabWidget *>(object))
            return tabs->count();
    } else if (c == QLatin1String("PAGES")) {
        if (auto *box = qobject_cast<const QToolBox *>(object))
            return box->count();
    }
    return -1;
}

QStringList collectionItemProperties(const QString &collection)
{
    if (collection.compare(QLatin1String("Columns"), Qt::CaseInsensitive) == 0)
        return {QStringLiteral("Caption")};
    return {QStringLiteral("Text"), QStringLiteral("Hint")};
}

QString readItem(const QObject *object, const QString &collection, int index, const QString &itemProperty)
{
    if (index < 0 || index >= collectionCount(object, collection))
        return QString();
    const bool hint = itemProperty.compare(QLatin1String("Hint"), Qt::CaseInsensitive) == 0;
    if (auto *tree = qobject_cast<const QTreeWidget *>(object))
        return tree->headerItem()->text(index);
    if (auto *table = qobject_cast<const QTableWidget *>(object)) {
        const QTableWidgetItem *item = table->horizontalHeaderItem(index);
        return item ? item->text() : QString();
    }
    if (auto *tabs = qobject_cast<const QTabWidget *>(object))
        return hint ? tabs->tabToolTip(index) : tabs->tabText(index);
    if (auto *box = qobject_cast<const QToolBox *>(object))
        return hint ? box->itemToolTip(index) : box->itemText(index);
    return QString();
}

void writeItem(QObject *object, const QString &collection, int index, const QString &itemProperty,
               const QString &value)
{
    if (index < 0 || index >= collectionCount(object, collection)
        || readItem(object, collection, index, itemProperty) == value)
        return;
    const bool hint = itemProperty.compare(QLatin1String("Hint"), Qt::CaseInsensitive) == 0;
    if (auto *tree = qobject_cast<QTreeWidget *>(object)) {
        tree->headerItem()->setText(index, value);
    } else if (auto *table = qobject_cast<QTableWidget *>(object)) {
        QTableWidgetItem *item = table->horizontalHeaderItem(index);
        if (!item) {
            item = new QTableWidgetItem;
            table->setHorizontalHeaderItem(index, item);
        }
        item->setText(value);
    } else if (auto *tabs = qobject_cast<QTabWidget *>(object)) {
        if (hint)
            tabs->setTabToolTip(index, value);
        else
            tabs->setTabText(index, value);
    } else if (auto *box = qobject_cast<QToolBox *>(object)) {
        if (hint)
            box->setItemToolTip(index, value);
        else
            box->setItemText(index, value);
    }
}

} // namespace TvxPropAccess
