#include "vxvexiltlv.h"

#include <QtWidgets/QTableWidget>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QTreeWidgetItemIterator>

namespace {

QString itemKey(const QString &view, int index)
{
    return view + QStringLiteral(".Items[") + QString::number(index) + QLatin1Char(']');
}

} // namespace

void TVexilTLV::SetLVTVItems(const TvxStringList *lines)
{
    codeCall();
    SetTable(stListView_TreeView_Items, lines);
    if (lines != ListView_TreeView_Items())
        ChangeLanguage();
}

void TVexilTLV::setListView_TreeView_Items(const QStringList &lines)
{
    FormWrite w(this);
    SetTable(stListView_TreeView_Items, lines);
}

const QSet<QString> &TVexilTLV::prefixes() const
{
    const TvxStringList *list = ListView_TreeView_Items();
    if (m_prefixesFor != list->version()) {
        // Each look-up would otherwise read the whole table.
        m_prefixes.clear();
        m_prefixes.reserve(list->count() * 2);
        for (const QString &line : list->lines()) {
            const qsizetype keyEnd = line.indexOf(LangDelim());
            const QStringView key = QStringView(line).left(keyEnd < 0 ? line.size() : keyEnd);
            for (qsizetype dot = key.indexOf(QLatin1Char('.')); dot >= 0; dot = key.indexOf(QLatin1Char('.'), dot + 1))
                m_prefixes.insert(key.left(dot).toString());
        }
        m_prefixesFor = list->version();
    }
    return m_prefixes;
}

bool TVexilTLV::IsCompIncluded(const QString &prefix) const
{
    return prefixes().contains(prefix);
}

void TVexilTLV::DeleteLine(const QString &name)
{
    codeCall();
    TvxStringList *list = ListView_TreeView_Items();
    const QString start = name + QLatin1Char('.');
    for (int i = 0; i < list->count(); ++i) {
        if (list->at(i).startsWith(start)) {
            list->removeAt(i);
            return;
        }
    }
}

QList<QTreeWidget *> TVexilTLV::trees() const
{
    QList<QTreeWidget *> found;
    if (QObject *form = owner()) {
        for (QTreeWidget *tree : form->findChildren<QTreeWidget *>()) {
            if (!tree->objectName().isEmpty())
                found << tree;
        }
    }
    return found;
}

QList<QTableWidget *> TVexilTLV::tables() const
{
    QList<QTableWidget *> found;
    if (QObject *form = owner()) {
        for (QTableWidget *table : form->findChildren<QTableWidget *>()) {
            if (!table->objectName().isEmpty())
                found << table;
        }
    }
    return found;
}

void TVexilTLV::watch(QWidget *view)
{
    const QString name = view->objectName();
    if (m_watched.contains(name))
        return;
    m_watched.insert(name);
    connect(view, &QObject::destroyed, this, [this, name] { viewRemoved(name); });
}

void TVexilTLV::viewRemoved(const QString &name)
{
    m_watched.remove(name);
    // A view that leaves the form takes its item lines along.
    if (!IsCompIncluded(name))
        return;
    TvxStringList *list = ListView_TreeView_Items();
    const QString start = name + QLatin1Char('.');
    QStringList kept;
    kept.reserve(list->count());
    for (const QString &line : list->lines()) {
        if (!line.startsWith(start))
            kept << line;
    }
    list->setLines(kept);
}

void TVexilTLV::BuildList()
{
    TVexil::BuildList();
    TvxStringList *list = ListView_TreeView_Items();
    const QChar delim = LangDelim();
    const QString closing(NumOfLanguages(), delim);
    QSet<QString> known = prefixes(); // the lines added below join it
    QStringList added;
    const auto add = [&](const QString &prefix, const char *property, const QString &text) {
        if (known.contains(prefix))
            return;
        known.insert(prefix);
        added << prefix + QLatin1Char('.') + QLatin1String(property) + delim + text + delim + closing;
    };
    for (QTreeWidget *tree : trees()) {
        watch(tree);
        int i = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it, ++i)
            add(itemKey(tree->objectName(), i), "Text", (*it)->text(0));
    }
    for (QTableWidget *table : tables()) {
        watch(table);
        for (int i = 0; i < table->rowCount(); ++i) {
            const QTableWidgetItem *item = table->item(i, 0);
            add(itemKey(table->objectName(), i), "Caption", item ? item->text() : QString());
        }
    }
    if (!added.isEmpty())
        list->setLines(list->lines() + added);
}

void TVexilTLV::applyVariantTexts()
{
    const TvxStringList *list = ListView_TreeView_Items();
    if (list->isEmpty())
        return;
    const bool useDefault = TranslateType() == ttGetDefault;
    const auto lookUp = [&](const QString &prefix, const char *property) {
        if (!IsCompIncluded(prefix))
            return QString();
        return GetTextFrom(list, prefix + QLatin1Char('.') + QLatin1String(property), useDefault);
    };
    for (QTreeWidget *tree : trees()) {
        watch(tree);
        int i = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it, ++i) {
            const QString text = lookUp(itemKey(tree->objectName(), i), "Text");
            if (!text.isEmpty() && (*it)->text(0) != text)
                (*it)->setText(0, text);
        }
    }
    for (QTableWidget *table : tables()) {
        watch(table);
        for (int i = 0; i < table->rowCount(); ++i) {
            QTableWidgetItem *item = table->item(i, 0);
            const QString text = item ? lookUp(itemKey(table->objectName(), i), "Caption") : QString();
            if (!text.isEmpty() && item->text() != text)
                item->setText(text);
        }
    }
}
