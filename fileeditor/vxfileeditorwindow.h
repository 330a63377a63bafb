#pragma once

#include "vxcomp.h"
#include "vxvexiltlv.h"
#include "vxrteditor.h"
#include "vxtranslationfileinfo.h"

#include <QtCore/QPointer>
#include <QtWidgets/QMainWindow>

#include <memory>

class QComboBox;
class QLabel;
class QListWidget;
class QVBoxLayout;

/// The main window of `vexil-editor`: one translation file, the forms and
/// categories it holds, and the grid editor on the table of the chosen form
/// and category.
///
/// A table is edited through a translation component on a hidden owner
/// named like the form, so Apply writes the file exactly as the form's own
/// component would: only that form's entries of that category change.
class TfrmFileEditor : public QMainWindow
{
    Q_OBJECT
public:
    explicit TfrmFileEditor(QWidget *parent = nullptr);
    ~TfrmFileEditor() override;

    /// Opens @p fileName, closing the file open now first (which may ask
    /// about unapplied changes). Returns false with a message in @p error
    /// when the file cannot be read or the user kept the open one.
    bool openFile(const QString &fileName, QString *error = nullptr);
    /// Closes the open file; asks first when the grid holds unapplied
    /// changes. False when the user chose to keep editing.
    bool closeFile();
    /// Chooses the category (adding it to the list when the file has no
    /// such section yet). False for a category outside the list while it
    /// is locked.
    bool selectCategory(TStringsType kind);
    /// Chooses the form; false when the file has no such form.
    bool selectForm(const QString &form);
    /// While locked, only the chosen category can be edited.
    void setCategoryLocked(bool locked);
    bool categoryLocked() const { return m_locked; }
    /// With this set, the grid editor's Apply (once saved) and Cancel end
    /// the work on the file: the file is closed and the window hidden.
    void setCloseAfterEdit(bool on) { m_closeAfterEdit = on; }

    QString fileName() const { return m_info.fileName; }
    bool hasFile() const { return !m_info.fileName.isEmpty(); }
    const TvxTranslationFileInfo &info() const { return m_info; }
    QString currentForm() const;
    /// The chosen category, or -1.
    int currentCategory() const;
    /// The grid editor now open, or nullptr.
    TfrmRTEditor *editor() const { return m_editor; }
    /// Whether the grid holds changes not applied yet.
    bool hasPendingChanges() const;

    QListWidget *formList() const { return m_lvForms; }
    QListWidget *categoryList() const { return m_lvCategories; }
    QComboBox *newCategoryBox() const { return m_cbNewCategory; }

public Q_SLOTS:
    /// File › Open: a non-native file dialog.
    void openClick();

Q_SIGNALS:
    /// The file open in the window was closed (File › Close, the window
    /// closed, another file opened, or an edit finished with close-after-edit).
    void fileClosed();

protected:
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void createControls();
    void fillLists();
    void showFileState();
    void selectionChanged();
    void openEditor();
    void editorShown();
    void discardEditor();
    bool settleEditor();
    bool applyEditor();
    bool saveTable();
    void removeDroppedEntries();
    void editorFinished();
    void newCategoryChosen(int index);
    void showError(const QString &message);
    template<typename F>
    void guarded(F &&command);
    QChar tableDelimiter() const;

    TvxTranslationFileInfo m_info;
    QList<TStringsType> m_started; // categories chosen that the file lacks
    bool m_locked = false;
    TStringsType m_lockedKind = stCaptions;
    bool m_closeAfterEdit = false;
    bool m_settling = false;
    bool m_updatingLists = false;
    // The session of the table being edited.
    std::unique_ptr<QWidget> m_owner;
    QPointer<TVexilTLV> m_component;
    QPointer<TfrmRTEditor> m_editor;
    QString m_editedForm;
    TStringsType m_editedKind = stCaptions;
    bool m_baselineTaken = false;
    QStringList m_baseline;
    QStringList m_baselineHeaders;

    QLabel *m_lbFileName = nullptr;
    QListWidget *m_lvForms = nullptr;      // lvFormNames
    QListWidget *m_lvCategories = nullptr; // lvCategories
    QComboBox *m_cbNewCategory = nullptr;
    QWidget *m_editorArea = nullptr;
    QVBoxLayout *m_editorLayout = nullptr;
    QLabel *m_placeholder = nullptr;
};
