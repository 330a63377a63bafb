#include "vxexpertwindow.h"

#include "vxcomp.h"
#include "vxerrors.h"
#include "vxexpert.h"
#include "vxexpertcommands.h"
#include "vxprogresswindow.h"
#include "vxoptions.h"
#include "vxsettings.h"
#include "vxtaskmenu.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerWidgetFactoryInterface>
#include <QtGui/QCloseEvent>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include <exception>

namespace {

QString folderKey()
{
    return Vexil::toolsKeyPath() + QStringLiteral("\\Expert");
}

QString cleanPath(const QString &path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

// The delimiter the grid editor last saved files with.
QChar fileDelimiter()
{
    const QString text =
        Vexil::openSettingsKey(Vexil::toolsKeyPath())->value(QStringLiteral("Delimiter")).toString();
    return text.isEmpty() ? QLatin1Char('|') : text.at(0);
}

QString formCount(int count)
{
    return count == 1 ? QStringLiteral("1 form") : QStringLiteral("%1 forms").arg(count);
}

} // namespace

// What the source commands see of this window: its forms, their files and
// components, and Designer's form windows.
class TfrmVexil::ScanProject : public TvxExpertProject
{
public:
    explicit ScanProject(TfrmVexil *window) : m_window(window) {}

    QWidget *window() const override { return m_window; }
    QStringList selectedForms() const override { return m_window->SelectedForms(); }
    TvxProjectForm form(const QString &name) const override
    {
        const int row = m_window->rowOf(name);
        return row < 0 ? TvxProjectForm() : m_window->m_rows.at(row).form;
    }
    QStringList formsWithComponent() const override
    {
        QStringList names;
        for (const QString &name : m_window->formNames()) {
            if (m_window->CheckTVexil(name))
                names << name;
        }
        return names;
    }
    QStringList units() const override { return m_window->m_project.units(); }
    QDesignerFormWindowInterface *openFormWindow(const QString &name) const override
    {
        return m_window->formWindowOf(name);
    }
    bool insertComponent(const QString &formName) override { return m_window->InsertTVexil(formName) != nullptr; }
    void refresh() override { m_window->RefreshList(); }

private:
    TfrmVexil *m_window;
};

TfrmVexil::TfrmVexil(TVexilExpert *expert, QWidget *parent) : QMainWindow(parent), m_expert(expert)
{
    setObjectName(QStringLiteral("frmVexil"));
    setWindowTitle(QStringLiteral("TVexil Expert"));
    setWindowFlag(Qt::Tool, true);
    m_model = new QStandardItemModel(0, colCount, this);
    m_model->setHorizontalHeaderLabels({QStringLiteral("Form"), QStringLiteral("Class"), QStringLiteral("Open"),
                                        QStringLiteral("Component"), QStringLiteral("Languages"),
                                        QStringLiteral("Lines"), QStringLiteral("Untranslated")});
    m_lvForms = new QTreeView(this);
    m_lvForms->setObjectName(QStringLiteral("lvForms"));
    m_lvForms->setModel(m_model);
    m_lvForms->setRootIsDecorated(false);
    m_lvForms->setUniformRowHeights(true);
    m_lvForms->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_lvForms->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_lvForms->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_lvForms->setAllColumnsShowFocus(true);
    // A project has a handful of forms: the columns follow their contents.
    m_lvForms->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_lvForms->header()->setStretchLastSection(true);
    setCentralWidget(m_lvForms);
    createActions();
    statusBar();
    resize(760, 320);
}

TfrmVexil::~TfrmVexil()
{
    if (m_expert)
        m_expert->windowClosing(this);
}

void TfrmVexil::report(const QString &text) const
{
    QMessageBox::warning(const_cast<TfrmVexil *>(this), windowTitle(), text);
}

void TfrmVexil::createActions()
{
    // Every command runs from the event loop: errors end in a box.
    const auto guarded = [this](auto &&work) {
        return [this, work] {
            try {
                work();
            } catch (const EVexilError &error) {
                report(error.message());
            } catch (const std::exception &error) {
                report(QString::fromLocal8Bit(error.what()));
            }
        };
    };
    QToolBar *tools = addToolBar(QStringLiteral("Forms"));
    tools->setObjectName(QStringLiteral("tbForms"));
    tools->setMovable(false);

    m_formsMenu = menuBar()->addMenu(QStringLiteral("&Forms"));
    QAction *refresh = m_formsMenu->addAction(QStringLiteral("&Refresh"), this, guarded([this] { RefreshList(); }));
    refresh->setShortcut(QKeySequence::Refresh);
    m_formsMenu->addAction(QStringLiteral("&Project folder..."), this, guarded([this] { chooseFolder(); }));
    m_formsMenu->addSeparator();
    QAction *open = m_formsMenu->addAction(QStringLiteral("&Open in Designer"), this, guarded([this] {
        for (const QString &form : SelectedForms())
            OpenForm(form);
    }));
    m_formsMenu->addAction(QStringLiteral("Open &all forms"), this, guarded([this] { OpenAllForms(); }));
    QAction *insert = m_formsMenu->addAction(QStringLiteral("&Insert translation component"), this, guarded([this] {
        for (const QString &form : SelectedForms())
            InsertTVexil(form);
    }));
    QAction *save = m_formsMenu->addAction(QStringLiteral("&Save form"), this, guarded([this] {
        for (const QString &form : SelectedForms())
            SaveForm(form);
    }));
    m_editorMenu = m_formsMenu->addMenu(QStringLiteral("&Editors"));
    // The verbs of the richest component; a category the selected form's
    // component lacks is disabled when the menu opens.
    const QStringList verbs = VexilDesigner::editorVerbs(nullptr) << QStringLiteral("ListView_TreeView_&Items Editor...");
    for (int i = 0; i < verbs.size(); ++i)
        m_editorMenu->addAction(verbs.at(i), this, guarded([this, i] { EditCategory(currentForm(), i); }));
    connect(m_editorMenu, &QMenu::aboutToShow, this, [this] {
        TvxCustomLang *component = GetVexil(currentForm(), false);
        const QList<QAction *> actions = m_editorMenu->actions();
        for (int i = 0; i < actions.size(); ++i)
            actions.at(i)->setEnabled(!component || VexilDesigner::editorVerbEnabled(component, i));
    });
    m_formsMenu->addSeparator();
    m_formsMenu->addAction(QStringLiteral("&Close"), this, &QWidget::close);

    QMenu *translations = menuBar()->addMenu(QStringLiteral("&Translations"));
    translations->addAction(QStringLiteral("&Save all..."), this, guarded([this] { fileCommand(0); }));
    translations->addAction(QStringLiteral("&Load all..."), this, guarded([this] { fileCommand(1); }));
    translations->addAction(QStringLiteral("&Merge all..."), this, guarded([this] { fileCommand(2); }));

    // The source scan's "&Source", "&Const section" and "&Tools" menus.
    m_scanProject = std::make_unique<ScanProject>(this);
    m_commands = new TvxExpertCommands(m_scanProject.get(), this);
    buildExpertMenus(menuBar(), m_commands);

    QMenu *view = menuBar()->addMenu(QStringLiteral("&View"));
    m_stayOnTop = view->addAction(QStringLiteral("Stay on &top"));
    m_stayOnTop->setCheckable(true);
    connect(m_stayOnTop, &QAction::toggled, this, guarded([this] { SetStayOnTop(m_stayOnTop->isChecked()); }));
    m_dockAction = view->addAction(QStringLiteral("&Dock in Designer"));
    m_dockAction->setCheckable(true);
    connect(m_dockAction, &QAction::toggled, this, guarded([this] { SetDocked(m_dockAction->isChecked()); }));
    view->addSeparator();
    QAction *options = view->addAction(QStringLiteral("&Options..."), this, guarded([this] { sbOptionsClick(); }));

    tools->addAction(refresh);
    tools->addAction(open);
    tools->addAction(insert);
    tools->addAction(save);
    auto *editButton = new QToolButton(tools);
    editButton->setText(QStringLiteral("&Editors"));
    editButton->setMenu(m_editorMenu);
    editButton->setPopupMode(QToolButton::InstantPopup);
    tools->addWidget(editButton);
    tools->addSeparator();
    auto *sbOptions = new QToolButton(tools);
    sbOptions->setObjectName(QStringLiteral("sbOptions"));
    sbOptions->setDefaultAction(options);
    tools->addWidget(sbOptions);

    // A double click opens the captions of the form.
    connect(m_lvForms, &QTreeView::doubleClicked, this, guarded([this] { EditCategory(currentForm(), 0); }));
}

// ---------------------------------------------------------------- the list

void TfrmVexil::startUp()
{
    QString folder = Vexil::openSettingsKey(folderKey())->value(QStringLiteral("ProjectFolder")).toString();
    if (folder.isEmpty() || !QFileInfo(folder).isDir()) {
        folder.clear();
        if (QDesignerFormEditorInterface *core = m_expert->core()) {
            QDesignerFormWindowInterface *active = core->formWindowManager()->activeFormWindow();
            if (active && !active->fileName().isEmpty())
                folder = QFileInfo(active->fileName()).absolutePath();
        }
    }
    m_project.setFolder(folder);
    RefreshList();
    if (m_expert->OpenAllForms())
        OpenAllForms();
}

void TfrmVexil::setProjectFolder(const QString &folder)
{
    m_project.setFolder(folder);
    Vexil::openSettingsKey(folderKey())->setValue(QStringLiteral("ProjectFolder"), m_project.folder());
    RefreshList();
}

void TfrmVexil::chooseFolder()
{
    const QString folder = QFileDialog::getExistingDirectory(this, QStringLiteral("Project folder"),
                                                             m_project.folder(), QFileDialog::DontUseNativeDialog);
    if (!folder.isEmpty())
        setProjectFolder(folder);
}

void TfrmVexil::readLive(Row &row) const
{
    QDesignerFormWindowInterface *window = row.window;
    QWidget *main = window ? window->mainContainer() : nullptr;
    if (!main)
        return;
    row.form.formName = main->objectName();
    if (row.form.className.isEmpty())
        row.form.className = main->objectName();
    TvxTranslationState state;
    if (TvxCustomLang *component = TvxCustomLang::componentOf(main)) {
        const QStringList names = VexilProject::tableProperties();
        QList<QStringList> tables;
        for (const QString &name : names)
            tables << component->property(name.toLatin1().constData()).toStringList();
        state = VexilProject::countTables(names, tables, component->NumOfLanguages(), component->LangDelim());
        state.componentClass = QString::fromLatin1(component->metaObject()->className());
        state.componentName = component->objectName();
    }
    row.form.state = state;
}

void TfrmVexil::RefreshList()
{
    m_project.refresh();
    m_rows.clear();
    QHash<QString, int> byPath;
    for (const TvxProjectForm &form : m_project.forms()) {
        byPath.insert(cleanPath(form.uiPath), int(m_rows.size()));
        m_rows << Row{form, nullptr};
    }
    // Open form windows: their live state wins; forms from elsewhere are
    // listed after the folder's.
    if (QDesignerFormEditorInterface *core = m_expert->core()) {
        QDesignerFormWindowManagerInterface *manager = core->formWindowManager();
        for (int i = 0; i < manager->formWindowCount(); ++i) {
            QDesignerFormWindowInterface *window = manager->formWindow(i);
            if (!window || !window->mainContainer())
                continue;
            const int index = byPath.value(cleanPath(window->fileName()), -1);
            if (index >= 0) {
                m_rows[index].window = window;
                readLive(m_rows[index]);
            } else {
                Row row;
                row.form.uiPath = window->fileName();
                row.window = window;
                readLive(row);
                m_rows << row;
            }
        }
    }
    rebuildModel();
    statusBar()->showMessage(m_project.folder().isEmpty()
                                 ? QStringLiteral("No project folder")
                                 : QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(m_project.folder()),
                                                                formCount(int(m_project.forms().size()))));
}

void TfrmVexil::rebuildModel()
{
    const QStringList selected = SelectedForms();
    m_model->setRowCount(0);
    m_model->setRowCount(int(m_rows.size()));
    for (int i = 0; i < m_rows.size(); ++i)
        showRow(i);
    for (const QString &form : selected)
        selectForm(form);
}

void TfrmVexil::showRow(int index)
{
    const Row &row = m_rows.at(index);
    const TvxTranslationState &state = row.form.state;
    QStringList lines;
    for (int i = 0; i < state.categories.size(); ++i)
        lines << QStringLiteral("%1 %2").arg(state.categories.at(i)).arg(state.lineCounts.value(i));
    QStringList untranslated;
    for (int k = 0; k < state.untranslated.size(); ++k)
        untranslated << QStringLiteral("%1: %2").arg(k + 1).arg(state.untranslated.at(k));
    const QStringList cells{row.form.formName,
                            row.form.className,
                            row.window ? QStringLiteral("yes") : QString(),
                            row.form.error.isEmpty() ? (state.hasComponent() ? QStringLiteral("%1 %2").arg(
                                                            state.componentClass, state.componentName)
                                                                             : QStringLiteral("none"))
                                                     : QStringLiteral("unreadable: ") + row.form.error,
                            state.hasComponent() ? QString::number(state.numLanguages) : QString(),
                            lines.join(QStringLiteral(", ")),
                            untranslated.join(QStringLiteral(", "))};
    for (int c = 0; c < colCount; ++c) {
        auto *item = new QStandardItem(cells.at(c));
        item->setData(row.form.formName, Qt::UserRole);
        if (c == colForm)
            item->setToolTip(QDir::toNativeSeparators(row.form.uiPath));
        m_model->setItem(index, c, item);
    }
}

int TfrmVexil::rowOf(const QString &formName) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).form.formName == formName)
            return i;
    }
    return -1;
}

int TfrmVexil::rowOf(QDesignerFormWindowInterface *formWindow) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).window == formWindow)
            return i;
    }
    return -1;
}

QStringList TfrmVexil::formNames() const
{
    QStringList names;
    for (const Row &row : m_rows)
        names << row.form.formName;
    return names;
}

QStringList TfrmVexil::SelectedForms() const
{
    QStringList names;
    if (!m_lvForms->selectionModel())
        return names;
    for (const QModelIndex &index : m_lvForms->selectionModel()->selectedRows(colForm))
        names << index.data(Qt::UserRole).toString();
    return names;
}

QString TfrmVexil::currentForm() const
{
    const QStringList selected = SelectedForms();
    if (!selected.isEmpty())
        return selected.first();
    return m_lvForms->currentIndex().isValid() ? m_lvForms->currentIndex().data(Qt::UserRole).toString() : QString();
}

void TfrmVexil::selectForm(const QString &formName)
{
    const int index = rowOf(formName);
    if (index < 0)
        return;
    const QModelIndex cell = m_model->index(index, colForm);
    m_lvForms->selectionModel()->select(cell, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_lvForms->setCurrentIndex(cell);
}

TvxTranslationState TfrmVexil::formState(const QString &formName) const
{
    const int index = rowOf(formName);
    return index < 0 ? TvxTranslationState() : m_rows.at(index).form.state;
}

bool TfrmVexil::IsFormOpen(const QString &formName) const
{
    return formWindowOf(formName) != nullptr;
}

QDesignerFormWindowInterface *TfrmVexil::formWindowOf(const QString &formName) const
{
    const int index = rowOf(formName);
    return index < 0 ? nullptr : m_rows.at(index).window.data();
}

QString TfrmVexil::UiPath(const QString &formName) const
{
    const int index = rowOf(formName);
    return index < 0 ? QString() : m_rows.at(index).form.uiPath;
}

QString TfrmVexil::CppPath(const QString &formName) const
{
    const int index = rowOf(formName);
    return index < 0 ? QString() : m_rows.at(index).form.cppPath;
}

QString TfrmVexil::HPath(const QString &formName) const
{
    const int index = rowOf(formName);
    return index < 0 ? QString() : m_rows.at(index).form.hPath;
}

// ---------------------------------------------------------------- notifiers

void TfrmVexil::formWindowChanged(QDesignerFormWindowInterface *formWindow)
{
    if (!formWindow || !formWindow->mainContainer())
        return;
    int index = rowOf(formWindow);
    if (index < 0) {
        const QString path = cleanPath(formWindow->fileName());
        for (int i = 0; i < m_rows.size() && !path.isEmpty(); ++i) {
            if (!m_rows.at(i).window && cleanPath(m_rows.at(i).form.uiPath) == path) {
                index = i;
                break;
            }
        }
        if (index < 0) {
            index = int(m_rows.size());
            m_rows << Row();
            m_rows[index].form.uiPath = formWindow->fileName();
            m_model->setRowCount(int(m_rows.size()));
        }
        m_rows[index].window = formWindow;
    }
    readLive(m_rows[index]);
    showRow(index);
}

void TfrmVexil::formWindowGone(QDesignerFormWindowInterface *formWindow)
{
    const int index = rowOf(formWindow);
    if (index < 0)
        return;
    Row &row = m_rows[index];
    row.window = nullptr;
    // A project form stays listed by its file: the name it had in Designer
    // may be one it was given there and never saved.
    const QString path = cleanPath(row.form.uiPath);
    bool inFolder = false;
    for (const TvxProjectForm &form : m_project.forms())
        inFolder = inFolder || (!path.isEmpty() && cleanPath(form.uiPath) == path);
    if (inFolder && QFileInfo::exists(row.form.uiPath)) {
        // Back to what the file holds.
        const TvxProjectForm saved = VexilProject::readForm(row.form.uiPath);
        row.form.state = saved.state;
        row.form.formName = saved.formName;
        row.form.className = saved.className;
        row.form.error = saved.error;
        showRow(index);
    } else {
        m_rows.removeAt(index);
        m_model->removeRow(index);
    }
}

void TfrmVexil::activeFormChanged(QDesignerFormWindowInterface *formWindow)
{
    const int index = rowOf(formWindow);
    if (index >= 0)
        m_lvForms->setCurrentIndex(m_model->index(index, colForm));
}

// ---------------------------------------------------------------- forms in Designer

QDesignerFormWindowInterface *TfrmVexil::OpenForm(const QString &formName)
{
    const int index = rowOf(formName);
    if (index < 0)
        return nullptr;
    if (m_rows.at(index).window)
        return m_rows.at(index).window;
    QDesignerFormEditorInterface *core = m_expert->core();
    const QString path = m_rows.at(index).form.uiPath;
    if (!core || path.isEmpty())
        return nullptr;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        report(QStringLiteral("Cannot open %1: %2").arg(QDir::toNativeSeparators(path), file.errorString()));
        return nullptr;
    }
    QDesignerFormWindowManagerInterface *manager = core->formWindowManager();
    QDesignerFormWindowInterface *window = manager->createFormWindow(nullptr, Qt::Window);
    // Known before Designer reports the window, so the notifier finds the row.
    m_rows[index].window = window;
    m_expert->adoptFormWindow(window);
    manager->addFormWindow(window);
    window->setFileName(path);
    QString error;
    if (!window->setContents(&file, &error)) {
        manager->removeFormWindow(window);
        delete window;
        if (index < m_rows.size())
            m_rows[index].window = nullptr;
        report(QStringLiteral("Cannot read %1: %2").arg(QDir::toNativeSeparators(path), error));
        return nullptr;
    }
    window->setDirty(false);
    // In a running Designer the form shows as a window of its own.
    if (core->topLevel() && core->topLevel()->isVisible()) {
        window->setWindowTitle(QFileInfo(path).fileName());
        window->resize(window->mainContainer() ? window->mainContainer()->size() + QSize(40, 40) : QSize(400, 300));
        window->show();
    }
    manager->setActiveFormWindow(window);
    const int now = rowOf(window);
    if (now >= 0) {
        readLive(m_rows[now]);
        showRow(now);
    }
    return window;
}

void TfrmVexil::OpenAllForms()
{
    for (const QString &form : formNames())
        OpenForm(form);
}

TvxCustomLang *TfrmVexil::GetVexil(const QString &formName, bool open)
{
    QDesignerFormWindowInterface *window = open ? OpenForm(formName) : formWindowOf(formName);
    QWidget *main = window ? window->mainContainer() : nullptr;
    return main ? TvxCustomLang::componentOf(main) : nullptr;
}

bool TfrmVexil::CheckTVexil(const QString &formName) const
{
    if (QDesignerFormWindowInterface *window = formWindowOf(formName))
        return window->mainContainer() && TvxCustomLang::componentOf(window->mainContainer());
    return formState(formName).hasComponent();
}

TvxCustomLang *TfrmVexil::InsertTVexil(const QString &formName)
{
    if (rowOf(formName) < 0)
        return nullptr;
    if (CheckTVexil(formName)) {
        report(QStringLiteral("The form %1 already has a translation component.").arg(formName));
        return nullptr;
    }
    QDesignerFormWindowInterface *window = OpenForm(formName);
    if (!window || !window->mainContainer())
        return nullptr;
    QDesignerFormEditorInterface *core = window->core();
    QString className = m_expert->DefaultComponent();
    if (!VexilProject::translationClasses().contains(className))
        className = QStringLiteral("TVexil");
    QWidget *widget = core->widgetFactory()->createWidget(className, window->mainContainer());
    auto *component = qobject_cast<TvxCustomLang *>(widget);
    if (!component) {
        // Designer got a placeholder (the reason was shown): nothing stays.
        delete widget;
        return nullptr;
    }
    component->setObjectName(className.mid(1) + QLatin1Char('1'));
    window->ensureUniqueObjectName(component);
    component->setGeometry(QRect(8, 8, 28, 28));
    window->manageWidget(component);
    component->show();
    window->cursor()->setWidgetProperty(component, QStringLiteral("NumOfLanguages"), m_expert->DefNumLang());
    window->setDirty(true);
    formWindowChanged(window);
    return component;
}

bool TfrmVexil::EditCategory(const QString &formName, int index)
{
    TvxCustomLang *component = GetVexil(formName, true);
    if (!component) {
        if (rowOf(formName) >= 0)
            report(QStringLiteral("The form %1 has no translation component.").arg(formName));
        return false;
    }
    const bool applied = VexilDesigner::runEditorVerb(component, index);
    if (QDesignerFormWindowInterface *window = formWindowOf(formName))
        formWindowChanged(window);
    return applied;
}

bool TfrmVexil::SaveForm(const QString &formName)
{
    QDesignerFormWindowInterface *window = formWindowOf(formName);
    const QString path = UiPath(formName);
    if (!window || path.isEmpty())
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(window->contents().toUtf8()) < 0 || !file.commit()) {
        report(QStringLiteral("Cannot write %1: %2").arg(QDir::toNativeSeparators(path), file.errorString()));
        return false;
    }
    window->setDirty(false);
    return true;
}

// ---------------------------------------------------------------- all forms, one file

template <class F>
int TfrmVexil::eachComponent(const QString &what, F &&work)
{
    int done = 0;
    QStringList failed;
    for (const QString &form : formNames()) {
        if (!CheckTVexil(form))
            continue;
        TvxCustomLang *component = GetVexil(form, true);
        if (!component)
            continue;
        try {
            if (work(component))
                ++done;
        } catch (const EVexilError &error) {
            failed << QStringLiteral("%1: %2").arg(form, error.message());
        } catch (const std::exception &error) {
            failed << QStringLiteral("%1: %2").arg(form, QString::fromLocal8Bit(error.what()));
        }
        if (QDesignerFormWindowInterface *window = formWindowOf(form))
            formWindowChanged(window);
    }
    if (!failed.isEmpty()) {
        report(QStringLiteral("%1 failed for:\n%2").arg(what, failed.join(QLatin1Char('\n'))));
        return -1;
    }
    return done;
}

int TfrmVexil::SaveAllTranslations(const QString &fileName)
{
    const QChar delimiter = fileDelimiter();
    return eachComponent(QStringLiteral("Saving"), [&](TvxCustomLang *component) {
        component->SaveAllToFile(fileName, delimiter);
        return true;
    });
}

namespace {

// Runs @p read on @p component and writes every table it changed back
// through the form window, so Designer's saved form holds it.
template <class F>
bool readThroughDesigner(TvxCustomLang *component, F &&read)
{
    const QStringList properties = VexilProject::tableProperties();
    QList<QStringList> before;
    for (const QString &property : properties)
        before << component->property(property.toLatin1().constData()).toStringList();
    const bool ok = read();
    for (int i = 0; i < properties.size(); ++i) {
        const QByteArray name = properties.at(i).toLatin1();
        const QVariant value = component->property(name.constData());
        if (!value.isValid())
            continue;
        const QStringList after = value.toStringList();
        if (after != before.at(i))
            VexilDesigner::commitTable(component, properties.at(i), before.at(i), after);
    }
    return ok;
}

} // namespace

int TfrmVexil::LoadAllTranslations(const QString &fileName)
{
    if (!QFileInfo(fileName).isReadable()) {
        report(QStringLiteral("Cannot read %1.").arg(QDir::toNativeSeparators(fileName)));
        return -1;
    }
    return eachComponent(QStringLiteral("Loading"), [&](TvxCustomLang *component) {
        if (!component->fileHasEntries(fileName))
            return false;
        return readThroughDesigner(component, [&] {
            // The tables become the file's: loading into a filled table
            // without clearing would keep the old line beside the new one.
            component->LoadAllFromFile(fileName, true);
            return true;
        });
    });
}

int TfrmVexil::MergeAllTranslations(const QString &fileName)
{
    if (!QFileInfo(fileName).isReadable()) {
        report(QStringLiteral("Cannot read %1.").arg(QDir::toNativeSeparators(fileName)));
        return -1;
    }
    return eachComponent(QStringLiteral("Merging"), [&](TvxCustomLang *component) {
        if (!component->fileHasEntries(fileName))
            return false;
        return readThroughDesigner(component, [&] {
            // Category by category over the tables the class has: the
            // all-categories merge fails on a class without the list- and
            // tree-view table and then leaves the component half-loaded.
            bool merged = true;
            for (int type = stCaptions; type <= stListView_TreeView_Items; ++type) {
                if (component->GetPropListByType(TStringsType(type)))
                    merged = component->MergeFromFile(TStringsType(type), fileName) && merged;
            }
            return merged;
        });
    });
}

void TfrmVexil::fileCommand(int kind)
{
    const QString filter = QStringLiteral("Translation files (*.lng *.ini);;All files (*)");
    QString fileName;
    if (kind == 0)
        fileName = QFileDialog::getSaveFileName(this, QStringLiteral("Save all translations"), m_project.folder(),
                                                filter, nullptr, QFileDialog::DontUseNativeDialog);
    else
        fileName = QFileDialog::getOpenFileName(this, kind == 1 ? QStringLiteral("Load all translations")
                                                                : QStringLiteral("Merge all translations"),
                                                m_project.folder(), filter, nullptr, QFileDialog::DontUseNativeDialog);
    if (fileName.isEmpty())
        return;
    const int count = kind == 0 ? SaveAllTranslations(fileName)
                                : kind == 1 ? LoadAllTranslations(fileName) : MergeAllTranslations(fileName);
    if (count >= 0)
        statusBar()->showMessage(formCount(count));
}

// ---------------------------------------------------------------- window

void TfrmVexil::sbOptionsClick()
{
    TfrmOptions options(m_expert, this);
    options.exec();
}

bool TfrmVexil::StayOnTop() const
{
    return windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

void TfrmVexil::SetStayOnTop(bool on)
{
    if (StayOnTop() == on)
        return;
    const bool visible = isVisible() && !m_dock;
    setWindowFlag(Qt::WindowStaysOnTopHint, on);
    if (visible)
        show();
    QSignalBlocker block(m_stayOnTop);
    m_stayOnTop->setChecked(on);
}

void TfrmVexil::SetDocked(bool on)
{
    QSignalBlocker block(m_dockAction);
    QDesignerFormEditorInterface *core = m_expert->core();
    auto *host = core ? qobject_cast<QMainWindow *>(core->topLevel()) : nullptr;
    if (on && !m_dock && host) {
        m_dock = new QDockWidget(windowTitle(), host);
        m_dock->setObjectName(QStringLiteral("dockVexil"));
        m_dock->setWidget(this);
        host->addDockWidget(Qt::RightDockWidgetArea, m_dock);
        m_dock->show();
    } else if (!on && m_dock) {
        QDockWidget *dock = m_dock;
        m_dock = nullptr;
        dock->setWidget(nullptr);
        setParent(nullptr);
        setWindowFlags(Qt::Tool | (StayOnTop() ? Qt::WindowStaysOnTopHint : Qt::WindowFlags()));
        delete dock;
        show();
    }
    m_dockAction->setChecked(m_dock != nullptr);
}

void TfrmVexil::closeEvent(QCloseEvent *event)
{
    // The notifiers stop before the window goes away.
    if (m_expert)
        m_expert->windowClosing(this);
    QMainWindow::closeEvent(event);
}
