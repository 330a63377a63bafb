#pragma once

#include "vxdesignertools_export.h"

#include <QtWidgets/QDialog>

class QListWidget;
class QToolButton;
class TvxCustomLang;

/// "Exclude components": picks the components of a translation component's
/// owner that are never translated. The right list starts with the
/// component's do-not-translate names; the left one holds every other
/// component of the owner, upper-cased as the list compares them.
class VEXIL_DESIGNER_EXPORT TfrmNotTranslate : public QDialog
{
    Q_OBJECT
public:
    explicit TfrmNotTranslate(TvxCustomLang *component, QWidget *parent = nullptr);

    /// The names of "Selected components:", in list order.
    QStringList selectedNames() const;

    /// Opens the dialog on @p component; on OK returns true and @p names
    /// gets the new do-not-translate list. The component is not changed.
    static bool Execute(TvxCustomLang *component, QStringList *names, QWidget *parent = nullptr);

private:
    /// Moves the selected items of @p from to the end of @p to.
    static void MoveSelection(QListWidget *from, QListWidget *to);
    /// Moves every item of @p from to the end of @p to.
    static void MoveAll(QListWidget *from, QListWidget *to);
    void updateButtons();

    QListWidget *lbComps;
    QListWidget *lbSelected;
    QToolButton *sbAdd;
    QToolButton *sbAddAll;
    QToolButton *sbRemove;
    QToolButton *sbRemoveAll;
};
