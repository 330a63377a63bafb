#pragma once

#include "vxdesignertools_export.h"

#include <QtWidgets/QWidget>

class QTableWidget;

/// The list of a form's string identifiers its unit no longer fetches. One
/// exists at a time; it is not modal and frees itself when closed.
class VEXIL_DESIGNER_EXPORT TvxUnusedIdsWindow : public QWidget
{
    Q_OBJECT
public:
    /// The window, made when there is none.
    static TvxUnusedIdsWindow *instance(QWidget *parent = nullptr);
    /// The window when one exists.
    static TvxUnusedIdsWindow *existing();

    void setIdentifiers(const QStringList &ids);
    QStringList identifiers() const;
    QTableWidget *grid() const { return m_grid; }

private:
    explicit TvxUnusedIdsWindow(QWidget *parent);
    QTableWidget *m_grid;
};
