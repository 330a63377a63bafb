#pragma once

#include "vxcomp.h"

#include <QtCore/QHash>
#include <QtCore/QSet>

class QTableWidget;
class QTreeWidget;

/// A translation component that also translates the items of the form's
/// tree widgets (every item in pre-order, keyed "Tree.Items[i].Text") and
/// table widgets (column 0 of every row, keyed "Table.Items[i].Caption"),
/// in the twelfth table, ListView_TreeView_Items.
class VEXIL_EXPORT TVexilTLV : public TVexil
{
    Q_OBJECT
    Q_PROPERTY(QStringList ListView_TreeView_Items READ itemLines WRITE setListView_TreeView_Items)
public:
    explicit TVexilTLV(QObject *owner = nullptr) : TVexil(owner) {}
    explicit TVexilTLV(QWidget *parent) : TVexil(parent) {}

    TvxStringList *ListView_TreeView_Items() const { return table(stListView_TreeView_Items); }
    /// Copies @p lines into the item table and applies the language.
    void SetLVTVItems(const TvxStringList *lines);
    QStringList itemLines() const { return ListView_TreeView_Items()->lines(); }
    void setListView_TreeView_Items(const QStringList &lines);

    /// Whether a line of the item table begins with @p prefix and a dot.
    bool IsCompIncluded(const QString &prefix) const;
    /// Deletes the first line of the item table that begins with @p name and a dot.
    void DeleteLine(const QString &name);

    /// The inherited build, then a line for every item without one (lines
    /// already there are kept, so earlier translations survive).
    void BuildList() override;

protected:
    void applyVariantTexts() override;

private:
    QList<QTreeWidget *> trees() const;
    QList<QTableWidget *> tables() const;
    void watch(QWidget *view);
    void viewRemoved(const QString &name);
    const QSet<QString> &prefixes() const;
    QHash<QString, QList<int>> linesByItem() const;

    mutable QSet<QString> m_prefixes;   // every key's text before each of its dots
    mutable quint64 m_prefixesFor = ~0ull; // the table version they were taken from
    QSet<QString> m_watched;
};
