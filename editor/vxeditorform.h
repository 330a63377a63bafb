#pragma once

#include "vexil_export.h"
#include "vxcomp.h"
#include "vxtypes.h"

#include <QtCore/QPersistentModelIndex>
#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

#include <memory>

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QStatusBar;
class QTableView;
class QToolButton;
class QAction;
class QFileDialog;
class TvxCellDelegate;
class TvxCustomLang;
class TvxDictionaryClient;
class TvxFormStorage;
class TvxGridHeader;
class TvxGridModel;
class TvxStringList;

/// The grid editor of one translation table: one row per table line, one
/// column per language. Apply hands the edited lines back through result();
/// the table itself is left to the caller.
///
/// The design-time editor (TDlgForm) and the run-time editor (TfrmRTEditor)
/// are this form with small differences.
class VEXIL_EXPORT TvxEditorForm : public QDialog
{
    Q_OBJECT
public:
    /// Edits @p table (category @p categoryName of kind @p kind) of
    /// @p component. The table is only read.
    TvxEditorForm(TvxCustomLang *component, const QString &categoryName, TStringsType kind,
                  const TvxStringList *table, QWidget *parent = nullptr);
    ~TvxEditorForm() override;

    TvxCustomLang *component() const { return m_component; }
    QString categoryName() const { return m_categoryName; }
    TStringsType kind() const { return m_kind; }
    TvxGridModel *model() const { return m_model; }
    QTableView *grid() const { return m_grid; }
    /// The lines Apply built.
    QStringList result() const { return m_result; }
    bool applied() const { return m_applied; }
    bool closedByButton() const { return m_closedByButton; }
    /// The delimiter the file commands write.
    QChar fileDelimiter() const;

    /// Fills the grid from the table; runs when the form is first shown.
    void BuildGrid();

    /// The connection to the dictionary manager, or nullptr while there is none.
    TvxDictionaryClient *server() const { return m_server.get(); }
    /// Connects to the dictionary manager unless connected, and shows the
    /// dictionary button down.
    void CreateServer();
    /// Has the manager store its dictionary; the connection is dropped only
    /// when it could.
    void FreeServer();

public Q_SLOTS:
    /// Apply: builds the result, names the languages and closes with Yes.
    void BitBtn1Click();
    /// Cancel: closes with No, leaving everything as it was.
    void BitBtn2Click();
    void sbAddClick();
    void sbDelClick();
    void sbClearClick();
    void sbLanguagesClick();
    void sbSaveClick();
    void sbLoadClick();
    /// Sorts the rows by @p column (not for locale settings).
    void sortByColumn(int column);
    /// The multi-line editor on the current cell.
    void Multiline1Click();
    /// Shows the dictionary manager while its button is down, else lets it go.
    void sbDictManClick();
    void sbDictAddClick();
    void sbDictAddAllClick();
    void sbDictFindClick();
    void sbDictAutoClick();

protected:
    /// Whether the form moves through the components' list (design time).
    virtual bool hasComponentList() const { return true; }
    /// Caption of the dictionary submenu.
    virtual QString dictionaryMenuCaption() const;
    /// Hook after a row was added.
    virtual void rowAdded(int row);

    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

public:
    void done(int result) override;
    void reject() override;

private:
    void createControls();
    void FormShow();
    void FormClose();
    void readEditorSettings();
    int keyColumnWidth() const;
    void cellSelected(const QModelIndex &current);
    void placeList(const QModelIndex &cell);
    void hideList();
    void listChosen(int item);
    void cbComponentsChosen(int item);
    void gridDoubleClicked(const QModelIndex &index);
    void popupMenu2(const QPoint &pos);
    void cutCell();
    void copyCell();
    void pasteCell();
    void deleteCell();
    bool currentCellEditable() const;
    void delimiterToggled(bool down);
    void delimiterEditDone();
    void showDifferenceCount(int count);
    void confirmKeyEdit();
    int ask(const QString &message, int buttons) const;
    void showError(const QString &message) const;
    template<typename F>
    void guarded(F &&command);
    QString fontLookup(const QString &base, int language) const;
    bool dictionaryReady();
    void gridFocusChanged(QWidget *now);

    QPointer<TvxCustomLang> m_component;
    QString m_categoryName;
    TStringsType m_kind;
    const TvxStringList *m_table;
    TvxGridModel *m_model;
    TvxCellDelegate *m_delegate;
    QStringList m_result;
    bool m_applied = false;
    bool m_closedByButton = false;
    bool m_shown = false;
    QString m_droppedFile;
    QPersistentModelIndex m_listCell;
    std::unique_ptr<TvxDictionaryClient> m_server;

protected:
    // Controls under the names the form has always used.
    QTableView *m_grid = nullptr;        // Grid1
    TvxGridHeader *m_header = nullptr;
    QComboBox *m_cbComponents = nullptr; // cbComponents
    QLineEdit *m_edDelim = nullptr;      // edDelim
    QToolButton *m_sbAdd = nullptr, *m_sbDel = nullptr, *m_sbOK = nullptr, *m_sbCancel = nullptr;
    QToolButton *m_sbLoad = nullptr, *m_sbSave = nullptr, *m_sbDelimiter = nullptr;
    QToolButton *m_sbLanguages = nullptr, *m_sbClear = nullptr;
    QToolButton *m_sbDictMan = nullptr, *m_sbDictFind = nullptr, *m_sbDictAuto = nullptr;
    QToolButton *m_sbDictAdd = nullptr, *m_sbDictAddAll = nullptr;
    QStatusBar *m_statusBar = nullptr; // StatusBar1
    QLabel *m_differenceLabel = nullptr;
    QMenu *m_popupMenu1 = nullptr;       // PopupMenu1
    QMenu *m_popupMenu2 = nullptr;       // PopupMenu2
    QMenu *m_sortBy = nullptr;           // Sortby1
    QMenu *m_dictionary = nullptr;       // Dictionary1
    QAction *m_multiline1 = nullptr, *m_n2 = nullptr;
    QAction *m_cut1 = nullptr, *m_copy1 = nullptr, *m_paste1 = nullptr, *m_delete1 = nullptr;
    QComboBox *m_list = nullptr;         // the fonts or character-sets drop-down
    QFileDialog *m_odLoad = nullptr;
    QFileDialog *m_sdSave = nullptr;
    TvxFormStorage *m_storage = nullptr;
};
