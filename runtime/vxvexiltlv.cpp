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

namespace {

// An item line's view name and item index: "view.Items[i].property".
bool parseItemKey(QStringView key, QStringView &view, int &index)
{
    static const QString marker = QStringLiteral(".Items[");
    const qsizetype at = key.indexOf(marker);
    if (at <= 0)
        return false;
    const qsizetype from = at + marker.size();
    const qsizetype close = key.indexOf(QLatin1Char(']'), from);
    if (close <= from)
        return false;
    bool ok = false;
    index = key.mid(from, close - from).toInt(&ok);
    if (!ok || index < 0)
        return false;
    view = key.left(at);
    return true;
}

} // namespace

QHash<QString, QList<int>> TVexilTLV::linesByItem() const
{
    // Per view, the first line of each item index: one pass over the table,
    // rather than a look-up by key per item, which costs far more once the
    // items outgrow the processor's caches.
    QHash<QString, QList<int>> found;
    const TvxStringList *list = ListView_TreeView_Items();
    const QChar delim = LangDelim();
    QStringView lastView;
    QList<int> *lastLines = nullptr;
    for (int l = 0; l < list->count(); ++l) {
        const QString &line = list->at(l);
        const qsizetype keyEnd = line.indexOf(delim);
        QStringView view;
        int index = 0;
        if (!parseItemKey(QStringView(line).left(keyEnd < 0 ? line.size() : keyEnd), view, index))
            continue;
        if (!lastLines || view != lastView) {
            lastLines = &found[view.toString()];
            lastView = view;
        }
        if (lastLines->size() <= index)
            lastLines->resize(index + 1, -1);
        if (lastLines->at(index) < 0)
            (*lastLines)[index] = l;
    }
    return found;
}

void TVexilTLV::BuildList()
{
    TVexil::BuildList();
    TvxStringList *list = ListView_TreeView_Items();
    const QChar delim = LangDelim();
    const QString closing(NumOfLanguages(), delim);
    const QHash<QString, QList<int>> existing = linesByItem();
    QStringList added;
    const auto add = [&](const QList<int> &lines, const QString &view, int index, const char *property,
                         const QString &text) {
        if (index < lines.size() && lines.at(index) >= 0)
            return; // lines already there keep their translations
        added << itemKey(view, index) + QLatin1Char('.') + QLatin1String(property) + delim + text + delim + closing;
    };
    for (QTreeWidget *tree : trees()) {
        watch(tree);
        const QList<int> lines = existing.value(tree->objectName());
        int i = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it, ++i)
            add(lines, tree->objectName(), i, "Text", (*it)->text(0));
    }
    for (QTableWidget *table : tables()) {
        watch(table);
        const QList<int> lines = existing.value(table->objectName());
        for (int i = 0; i < table->rowCount(); ++i) {
            const QTableWidgetItem *item = table->item(i, 0);
            add(lines, table->objectName(), i, "Caption", item ? item->text() : QString());
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
    const QHash<QString, QList<int>> byItem = linesByItem();
    const int language = ActiveLanguage();
    const bool useDefault = TranslateType() == ttGetDefault;
    const QChar delim = LangDelim();
    // The text a switch writes for an item, or an empty text.
    const auto textOf = [&](const QList<int> &lines, int index) {
        if (index >= lines.size() || lines.at(index) < 0)
            return QStringView();
        const QString &line = list->at(lines.at(index));
        QStringView text = ExtractWordView(language + 1, line, delim);
        if (text.isEmpty() && useDefault)
            text = ExtractWordView(2, line, delim);
        return text;
    };
    for (QTreeWidget *tree : trees()) {
        watch(tree);
        const auto found = byItem.constFind(tree->objectName());
        if (found == byItem.cend())
            continue;
        int i = 0;
        for (QTreeWidgetItemIterator it(tree); *it; ++it, ++i) {
            const QStringView text = textOf(*found, i);
            if (!text.isEmpty() && (*it)->text(0) != text)
                (*it)->setText(0, text.toString());
        }
    }
    for (QTableWidget *table : tables()) {
        watch(table);
        const auto found = byItem.constFind(table->objectName());
        if (found == byItem.cend())
            continue;
        for (int i = 0; i < table->rowCount(); ++i) {
            QTableWidgetItem *item = table->item(i, 0);
            const QStringView text = item ? textOf(*found, i) : QStringView();
            if (!text.isEmpty() && item->text() != text)
                item->setText(text.toString());
        }
    }
}
