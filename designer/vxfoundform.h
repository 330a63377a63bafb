#pragma once

#include "vxdesignertools_export.h"

#include "vxsourcescan.h"

#include <QtWidgets/QDialog>

class QLabel;
class QMenu;
class QPushButton;
class QTableWidget;
class TvxFormStorage;

/// The review of one scan's finds: a grid of identifier, text, replacement
/// and source line per literal, where the developer edits identifiers and
/// calls, deletes rows, marks rows and renumbers. Works on the scan's list;
/// Replace accepts it as edited.
class VEXIL_DESIGNER_EXPORT TfrmFound : public QDialog
{
    Q_OBJECT
public:
    explicit TfrmFound(Vexil::Expert::TvxFoundList *list, QWidget *parent = nullptr);

    Vexil::Expert::TvxFoundList *list() const { return m_list; }
    QTableWidget *grid() const { return sgStrings; }
    /// The note panel's text.
    QString note() const;

    // The commands, as the buttons and menu items run them.
    void btOKClick();
    void btDeleteClick();
    void btIDClick();
    void Markfordelete1Click();
    void Invertselection1Click();
    void TypecasttoPChar1Click();
    /// A click on data row @p row (from 1) with @p modifiers.
    void gridClick(int row, Qt::KeyboardModifiers modifiers);
    /// Sets the note for editing column @p column (empty for column 0).
    void setEditNote(int column);
    void clearNote();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();
    void enableCommands();
    void cellChanged(int row, int column);
    int currentDataRow() const;

    Vexil::Expert::TvxFoundList *m_list;
    QTableWidget *sgStrings;
    QLabel *Panel2;
    QPushButton *btOK, *btCancel, *btDelete, *btID;
    QMenu *m_popup;
    QAction *Delete1, *StartID1, *Markfordelete1, *Invertselection1, *TypecasttoPChar1;
    TvxFormStorage *m_storage = nullptr;
    bool m_filling = false;
};
