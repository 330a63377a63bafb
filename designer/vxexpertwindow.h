#pragma once

#include "vxdesignertools_export.h"
#include "vxproject.h"

#include <QtCore/QPointer>

#include <memory>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>

class QDesignerFormWindowInterface;
class QMenu;
class QStandardItemModel;
class QTreeView;
class TVexilExpert;
class TvxCustomLang;
class TvxExpertCommands;

/// The expert's main window: the project's forms with their translation
/// state, and the commands that work on them (insert a translation
/// component, open the grid editor on a category, save, load and merge the
/// translations of all forms through one file). The menu bar leaves room
/// for the source commands.
class VEXIL_DESIGNER_EXPORT TfrmVexil : public QMainWindow
{
    Q_OBJECT
public:
    /// The form list's columns.
    enum Column { colForm, colClass, colOpen, colComponent, colLanguages, colLines, colUntranslated, colCount };

    explicit TfrmVexil(TVexilExpert *expert, QWidget *parent = nullptr);
    ~TfrmVexil() override;

    TVexilExpert *expert() const { return m_expert; }

    /// Chooses the project folder (the remembered one, else the folder of
    /// the active form's file), lists the forms and, when the expert says
    /// so, opens them all in Designer.
    void startUp();
    QString projectFolder() const { return m_project.folder(); }
    /// Lists the forms of @p folder and remembers it.
    void setProjectFolder(const QString &folder);
    /// Reads the project folder again and matches the open form windows.
    void RefreshList();

    // The forms.
    QStringList formNames() const;
    QStringList SelectedForms() const;
    void selectForm(const QString &formName);
    bool IsFormOpen(const QString &formName) const;
    QDesignerFormWindowInterface *formWindowOf(const QString &formName) const;
    /// The form's window in Designer, opening its .ui when needed; none when
    /// the form has no file or the file cannot be read (reported in a box).
    QDesignerFormWindowInterface *OpenForm(const QString &formName);
    void OpenAllForms();
    QString UiPath(const QString &formName) const;
    QString CppPath(const QString &formName) const;
    QString HPath(const QString &formName) const;
    /// The form's translation state as listed.
    TvxTranslationState formState(const QString &formName) const;

    // Translation components.
    /// The form's live translation component, opening the form in Designer
    /// when @p open is set; none when it has none.
    TvxCustomLang *GetVexil(const QString &formName, bool open = true);
    /// Whether the form has a translation component (the live one when the
    /// form is open, else the one its .ui holds).
    bool CheckTVexil(const QString &formName) const;
    /// Puts a translation component of the expert's default class with its
    /// default number of languages into the form, through Designer so the
    /// saved form holds it. None (and a box saying why) when the form
    /// already has one or cannot be opened.
    TvxCustomLang *InsertTVexil(const QString &formName);
    /// Opens the grid editor on category verb @p index of the form's
    /// component; true when the edit was applied.
    bool EditCategory(const QString &formName, int index);
    /// Writes the form's Designer contents to its .ui file.
    bool SaveForm(const QString &formName);

    // All forms through one translation file. Each returns the number of
    // forms whose translations were written or read, or -1 on an error
    // (reported in a box).
    int SaveAllTranslations(const QString &fileName);
    int LoadAllTranslations(const QString &fileName);
    int MergeAllTranslations(const QString &fileName);

    bool StayOnTop() const;
    void SetStayOnTop(bool on);
    bool isDocked() const { return m_dock != nullptr; }
    /// Docks the window into Designer's main window (when it is one) or
    /// floats it as a tool window.
    void SetDocked(bool on);

    QTreeView *lvForms() const { return m_lvForms; }
    QStandardItemModel *formModel() const { return m_model; }
    QMenu *formsMenu() const { return m_formsMenu; }
    /// The source scan and maintenance commands behind the "&Source",
    /// "&Const section" and "&Tools" menus.
    TvxExpertCommands *commands() const { return m_commands; }

    // Told by the notifiers.
    void formWindowChanged(QDesignerFormWindowInterface *formWindow);
    void formWindowGone(QDesignerFormWindowInterface *formWindow);
    void activeFormChanged(QDesignerFormWindowInterface *formWindow);

public slots:
    void sbOptionsClick();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    class ScanProject;
    friend class ScanProject;

    struct Row
    {
        TvxProjectForm form;
        QPointer<QDesignerFormWindowInterface> window;
    };

    void createActions();
    int rowOf(const QString &formName) const;
    int rowOf(QDesignerFormWindowInterface *formWindow) const;
    void readLive(Row &row) const;
    void showRow(int index);
    void rebuildModel();
    QString currentForm() const;
    template <class F>
    int eachComponent(const QString &what, F &&work);
    void chooseFolder();
    void fileCommand(int kind);
    void report(const QString &text) const;

    TVexilExpert *m_expert;
    TvxProject m_project;
    QList<Row> m_rows;
    QTreeView *m_lvForms = nullptr;
    QStandardItemModel *m_model = nullptr;
    QMenu *m_formsMenu = nullptr;
    QMenu *m_editorMenu = nullptr;
    QAction *m_stayOnTop = nullptr;
    QAction *m_dockAction = nullptr;
    QPointer<QDockWidget> m_dock;
    std::unique_ptr<ScanProject> m_scanProject;
    TvxExpertCommands *m_commands = nullptr;
};
