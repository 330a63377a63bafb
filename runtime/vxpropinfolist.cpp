#include "vxpropinfolist.h"

#include <QtCore/QHash>
#include <QtCore/QMetaProperty>
#include <QtCore/QSet>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFontComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTextEdit>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolBox>
#include <QtWidgets/QTreeWidget>

namespace {

struct ClassProps
{
    QList<TvxPropInfo> props;
    QHash<QString, int> byUpperName;
    QHash<QString, int> byName; // as written: most look-ups need no upper-casing
    bool hasCollections = false;
    QString caption; // "text" or "title" when the class has one
    bool hasWindowTitle = false;
    QList<TvxPropInfo> otherStrings; // without the caption and window title
};

TvxPropInfo::Kind kindOf(const QMetaProperty &p)
{
    switch (p.metaType().id()) {
    case QMetaType::QString:
        return TvxPropInfo::String;
    case QMetaType::QStringList:
        return TvxPropInfo::StringList;
    case QMetaType::QFont:
        return TvxPropInfo::Font;
    default:
        return TvxPropInfo::Other;
    }
}

void addPseudo(ClassProps &c, const char *name, TvxPropInfo::Kind kind)
{
    TvxPropInfo info;
    info.name = QLatin1String(name);
    info.kind = kind;
    info.className = QLatin1String(kind == TvxPropInfo::StringList ? "TStrings" : "TCollection");
    c.props.append(info);
}

// Properties that are never offered for translation: identity, styling,
// paths, and the whole-document texts of text edits (their lines are).
bool isExcludedOther(const QObject *object, const QMetaProperty &p)
{
    static const QSet<QByteArray> excluded = {"objectName", "styleSheet", "windowFilePath",
                                              "windowIconText", "toolTip", "displayLabel"};
    const QByteArray name(p.name());
    if (excluded.contains(name))
        return true;
    if (p.isUser())
        return true; // the user's own value: a line edit's text, a combo's current text
    if (name == "markdown" && qobject_cast<const QTextEdit *>(object))
        return true;
    return false;
}

ClassProps buildClassProps(const QObject *object)
{
    ClassProps c;
    const QMetaObject *mo = object->metaObject();
    for (int i = 0; i < mo->propertyCount(); ++i) {
        const QMetaProperty p = mo->property(i);
        if (!p.isReadable() || !p.isWritable() || !p.isDesignable())
            continue;
        TvxPropInfo info;
        info.name = QLatin1String(p.name());
        info.kind = kindOf(p);
        info.metaIndex = i;
        if (info.kind == TvxPropInfo::StringList)
            info.className = QStringLiteral("TStrings");
        else if (info.kind == TvxPropInfo::Font)
            info.className = QStringLiteral("TFont");
        c.props.append(info);
        if (info.kind != TvxPropInfo::String)
            continue;
        // The user property (a line edit's text) is the user's data, never a caption.
        if (c.caption.isEmpty() && !p.isUser()
            && (info.name == QLatin1String("text") || info.name == QLatin1String("title")))
            c.caption = info.name;
        if (info.name == QLatin1String("windowTitle"))
            c.hasWindowTitle = true;
    }
    // A font combo box lists the fonts of the system, which are no texts.
    if ((qobject_cast<const QComboBox *>(object) && !qobject_cast<const QFontComboBox *>(object))
        || qobject_cast<const QListWidget *>(object))
        addPseudo(c, "Items", TvxPropInfo::StringList);
    if (qobject_cast<const QPlainTextEdit *>(object) || qobject_cast<const QTextEdit *>(object))
        addPseudo(c, "Lines", TvxPropInfo::StringList);
    if (qobject_cast<const QTreeWidget *>(object) || qobject_cast<const QTableWidget *>(object))
        addPseudo(c, "Columns", TvxPropInfo::Collection);
    if (qobject_cast<const QTabWidget *>(object))
        addPseudo(c, "Tabs", TvxPropInfo::Collection);
    if (qobject_cast<const QToolBox *>(object))
        addPseudo(c, "Pages", TvxPropInfo::Collection);

    for (int i = 0; i < c.props.size(); ++i) {
        c.byUpperName.insert(c.props.at(i).name.toUpper(), i);
        c.byName.insert(c.props.at(i).name, i);
        c.hasCollections = c.hasCollections || c.props.at(i).kind == TvxPropInfo::Collection;
    }

    for (const TvxPropInfo &info : std::as_const(c.props)) {
        if (info.kind != TvxPropInfo::String || info.name == c.caption
            || info.name == QLatin1String("windowTitle"))
            continue;
        if (!isExcludedOther(object, mo->property(info.metaIndex)))
            c.otherStrings.append(info);
    }
    return c;
}

const ClassProps &classProps(const QObject *object)
{
    // Properties depend on the class only; the engine asks for them once
    // per component and table, so they are worked out once per class.
    static QHash<const QMetaObject *, ClassProps> cache;
    const QMetaObject *mo = object->metaObject();
    auto it = cache.find(mo);
    if (it == cache.end())
        it = cache.insert(mo, buildClassProps(object));
    return it.value();
}

bool windowTitleIsCaption(const QObject *object)
{
    if (!object->isWidgetType())
        return false;
    auto *w = static_cast<const QWidget *>(object);
    return w->isWindow() || qobject_cast<const QDockWidget *>(w) || qobject_cast<const QToolBar *>(w);
}

} // namespace

TvxPropInfoList::TvxPropInfoList(const QObject *object, int kinds)
{
    if (!object)
        return;
    const ClassProps &c = classProps(object);
    if (kinds == AllKinds) {
        m_items = c.props;
        return;
    }
    for (const TvxPropInfo &info : c.props) {
        if (info.kind & kinds)
            m_items.append(info);
    }
}

const TvxPropInfo *TvxPropInfoList::Find(const QString &name) const
{
    const QString upper = name.toUpper();
    for (const TvxPropInfo &info : m_items) {
        if (info.name.toUpper() == upper)
            return &info;
    }
    return nullptr;
}

bool TvxPropInfoList::Contains(const TvxPropInfo &info) const
{
    return m_items.contains(info);
}

void TvxPropInfoList::Delete(int i)
{
    m_items.removeAt(i);
}

void TvxPropInfoList::Intersect(const TvxPropInfoList &other)
{
    for (int i = m_items.size() - 1; i >= 0; --i) {
        if (!other.Contains(m_items.at(i)))
            m_items.removeAt(i);
    }
}

const TvxPropInfo *TvxPropInfoList::findProperty(const QObject *object, const QString &name)
{
    if (!object)
        return nullptr;
    const ClassProps &c = classProps(object);
    int i = c.byName.value(name, -1);
    if (i < 0)
        i = c.byUpperName.value(name.toUpper(), -1);
    return i >= 0 ? &c.props.at(i) : nullptr;
}

bool TvxPropInfoList::hasCollections(const QObject *object)
{
    return object && classProps(object).hasCollections;
}

QString TvxPropInfoList::captionProperty(const QObject *object)
{
    if (!object)
        return QString();
    const ClassProps &c = classProps(object);
    if (!c.caption.isEmpty())
        return c.caption;
    if (c.hasWindowTitle && windowTitleIsCaption(object))
        return QStringLiteral("windowTitle");
    return QString();
}

QList<TvxPropInfo> TvxPropInfoList::otherStringProperties(const QObject *object)
{
    if (!object)
        return {};
    const ClassProps &c = classProps(object);
    if (c.hasWindowTitle && c.caption.isEmpty() == false && windowTitleIsCaption(object)) {
        // A window whose caption is its text or title keeps its window title here.
        QList<TvxPropInfo> list = c.otherStrings;
        const int i = c.byUpperName.value(QStringLiteral("WINDOWTITLE"), -1);
        if (i >= 0)
            list.append(c.props.at(i));
        return list;
    }
    return c.otherStrings;
}
