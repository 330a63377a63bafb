#pragma once

#include "vxcomp.h"

// A component that publishes the twelfth table, the list- and tree-view
// item texts, as the list- and tree-view variant does.
class TVexilItems : public TVexil
{
    Q_OBJECT
    Q_PROPERTY(QStringList ListView_TreeView_Items READ itemLines WRITE setItemLines)
public:
    explicit TVexilItems(QWidget *parent) : TVexil(parent) {}
    TvxStringList *Items() const { return GetPropListByType(stListView_TreeView_Items); }
    QStringList itemLines() const { return Items()->lines(); }
    void setItemLines(const QStringList &l) { SetTable(stListView_TreeView_Items, l); }
};
