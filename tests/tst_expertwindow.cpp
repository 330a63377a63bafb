// The expert's main window in a real form editor over a real project
// folder: the forms and their translation state, the notifiers that keep
// the list in step with Designer's form windows, inserting a translation
// component, the grid editor on a category, and all forms' translations
// through one file.
#include "designercore.h"
#include "dialogdriver.h"
#include "expertforms.h"

#include "vxcomp.h"
#include "vxeditorform.h"
#include "vxexpert.h"
#include "vxexpertwindow.h"
#include "vxgridmodel.h"
#include "vxoptions.h"
#include "vxproject.h"
#include "vxsettings.h"
#include "vxvexilrt.h"

#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeView>

#include <memory>

using namespace ExpertForms;

namespace {

int rowOf(const TvxEditorForm *form, const QString &key)
{
    for (int row = 0; row < form->model()->rowCount(); ++row) {
        if (form->model()->cell(row, 0) == key)
            return row;
    }
    return -1;
}

QString cell(TfrmVexil *window, const QString &form, int column)
{
    QStandardItemModel *model = window->formModel();
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->item(row, TfrmVexil::colForm)->text() == form)
            return model->item(row, column)->text();
    }
    return QStringLiteral("<no row>");
}

} // namespace

class TestExpertWindow : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void listsTheProjectFormsWithTheirState();
    void notifiersFollowFormWindows();
    void closedWindowHearsNothing();
    void insertedComponentIsInTheSavedForm();
    void gridEditorOnAnyCategory();
    void allFormsThroughOneFile();
    void openAllFormsAtStartUp();
    void optionsStayOnTopAndPictures();
    void sourceMenusWorkOnTheListedForms();
    void closedDockComesBackFromTheMenuItem();
    void formRenamedAndClosedUnsavedStaysListed();

private:
    TfrmVexil *openWindow();

    std::unique_ptr<DesignerCore> m_designer;
    std::unique_ptr<QMainWindow> m_main;
    std::unique_ptr<QTemporaryDir> m_settings;
    std::unique_ptr<QTemporaryDir> m_project;
    std::unique_ptr<TVexilExpert> m_expert;
};

void TestExpertWindow::initTestCase()
{
    m_designer = std::make_unique<DesignerCore>();
    m_main = std::make_unique<QMainWindow>();
    for (const char *title : {"&File", "&Edit", "F&orm", "&View", "&Settings", "&Window", "&Help"})
        m_main->menuBar()->addMenu(QLatin1String(title))->addAction(QStringLiteral("Item"));
    m_designer->core->setTopLevel(m_main.get());
}

void TestExpertWindow::init()
{
    m_settings = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings->path());
    m_project = std::make_unique<QTemporaryDir>();
    const QString d = m_project->path() + QLatin1Char('/');
    QVERIFY(writeFile(d + QStringLiteral("form1.ui"),
                      formUi(QStringLiteral("Form1"), QStringLiteral("TVexil"), 2,
                             {QStringLiteral("Form1\tForm1 window\tFenetre\t"), QStringLiteral("pushButton\tHello\t\t")})));
    QVERIFY(writeFile(d + QStringLiteral("form1.cpp"), QStringLiteral("#include \"form1.h\"\n")));
    QVERIFY(writeFile(d + QStringLiteral("form1.h"), QStringLiteral("#pragma once\n")));
    QVERIFY(writeFile(d + QStringLiteral("form2.ui"), formUi(QStringLiteral("Form2"))));
    QVERIFY(writeFile(d + QStringLiteral("main.cpp"), QStringLiteral("int main(int, char **)\n{\n    return 0;\n}\n")));
    Vexil::openSettingsKey(Vexil::toolsKeyPath() + QStringLiteral("\\Expert"))
        ->setValue(QStringLiteral("ProjectFolder"), m_project->path());
    m_expert = std::make_unique<TVexilExpert>(m_designer->core);
}

void TestExpertWindow::cleanup()
{
    m_expert.reset();
    m_designer->closeForms();
}

void TestExpertWindow::cleanupTestCase()
{
    m_designer->core->setTopLevel(nullptr);
    m_designer.reset();
    m_main.reset();
}

TfrmVexil *TestExpertWindow::openWindow()
{
    m_expert->menuItem()->trigger();
    return m_expert->mainWindow();
}

void TestExpertWindow::listsTheProjectFormsWithTheirState()
{
    TfrmVexil *window = openWindow();
    QVERIFY(window);
    QCOMPARE(window->projectFolder(), QDir::cleanPath(m_project->path()));
    QCOMPARE(window->formNames(), (QStringList{QStringLiteral("Form1"), QStringLiteral("Form2")}));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colComponent), QStringLiteral("TVexil Vexil1"));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colLanguages), QStringLiteral("2"));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines), QStringLiteral("Captions 2"));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colUntranslated), QStringLiteral("1: 0, 2: 1"));
    QCOMPARE(cell(window, QStringLiteral("Form2"), TfrmVexil::colComponent), QStringLiteral("none"));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colOpen), QString());
    QVERIFY(window->CheckTVexil(QStringLiteral("Form1")));
    QVERIFY(!window->CheckTVexil(QStringLiteral("Form2")));
    QCOMPARE(window->CppPath(QStringLiteral("Form1")), m_project->filePath(QStringLiteral("form1.cpp")));
    QCOMPARE(window->HPath(QStringLiteral("Form1")), m_project->filePath(QStringLiteral("form1.h")));
    QVERIFY(window->CppPath(QStringLiteral("Form2")).isEmpty());
    // Not open: no live component unless asked to open.
    QVERIFY(!window->GetVexil(QStringLiteral("Form1"), false));
    QVERIFY(!window->IsFormOpen(QStringLiteral("Form1")));
    TvxCustomLang *vexil = window->GetVexil(QStringLiteral("Form1"));
    QVERIFY(vexil);
    QVERIFY(window->IsFormOpen(QStringLiteral("Form1")));
    QCOMPARE(window->formWindowOf(QStringLiteral("Form1"))->fileName(), window->UiPath(QStringLiteral("Form1")));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colOpen), QStringLiteral("yes"));
    // Room for the source commands: the window has its own menu bar.
    QVERIFY(window->menuBar()->actions().size() >= 3);
    window->selectForm(QStringLiteral("Form2"));
    QCOMPARE(window->SelectedForms(), QStringList{QStringLiteral("Form2")});
}

void TestExpertWindow::notifiersFollowFormWindows()
{
    TfrmVexil *window = openWindow();
    QDesignerFormWindowManagerInterface *manager = m_designer->core->formWindowManager();

    // A form from elsewhere, opened in Designer, is listed.
    QDesignerFormWindowInterface *other = m_designer->openForm(formUi(QStringLiteral("Elsewhere"), QStringLiteral("TVexilRT"), 3));
    QVERIFY(other);
    QCOMPARE(cell(window, QStringLiteral("Elsewhere"), TfrmVexil::colComponent), QStringLiteral("TVexilRT Vexil1"));
    QCOMPARE(cell(window, QStringLiteral("Elsewhere"), TfrmVexil::colLanguages), QStringLiteral("3"));
    QCOMPARE(window->formNames().size(), 3);

    // Renamed in Designer: the row follows.
    other->cursor()->setProperty(QStringLiteral("objectName"), QStringLiteral("Renamed"));
    QCOMPARE(other->mainContainer()->objectName(), QStringLiteral("Renamed"));
    QVERIFY(window->formNames().contains(QStringLiteral("Renamed")));
    QVERIFY(!window->formNames().contains(QStringLiteral("Elsewhere")));

    // A change of the form shows at once.
    auto *component = qobject_cast<TvxCustomLang *>(TvxCustomLang::componentOf(other->mainContainer()));
    QVERIFY(component);
    other->cursor()->setWidgetProperty(component, QStringLiteral("NumOfLanguages"), 4);
    QCOMPARE(cell(window, QStringLiteral("Renamed"), TfrmVexil::colLanguages), QStringLiteral("4"));

    // Closed in Designer: gone from the list.
    m_designer->closeForm(other);
    QCOMPARE(window->formNames().size(), 2);

    // A project form closed: back to what its file holds, nothing dangles.
    QDesignerFormWindowInterface *form1 = window->OpenForm(QStringLiteral("Form1"));
    QVERIFY(form1);
    QCOMPARE(manager->activeFormWindow(), form1);
    QCOMPARE(m_expert->notifier()->moduleNotifierCount(), 1);
    manager->removeFormWindow(form1);
    delete form1;
    QVERIFY(!window->IsFormOpen(QStringLiteral("Form1")));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colOpen), QString());
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines), QStringLiteral("Captions 2"));
    QCOMPARE(m_expert->notifier()->moduleNotifierCount(), 0);

    // A form window deleted without being removed first.
    QDesignerFormWindowInterface *form2 = window->OpenForm(QStringLiteral("Form2"));
    QVERIFY(form2);
    delete form2;
    QVERIFY(!window->IsFormOpen(QStringLiteral("Form2")));
    QCOMPARE(window->formNames().size(), 2);
}

void TestExpertWindow::closedWindowHearsNothing()
{
    TfrmVexil *window = openWindow();
    QDesignerFormWindowInterface *open = m_designer->openForm(formUi(QStringLiteral("Early")));
    QVERIFY(open);
    QCOMPARE(m_expert->notifier()->moduleNotifierCount(), 1);
    window->close();
    // The notifiers went before the window closed.
    QCOMPARE(m_expert->notifier()->moduleNotifierCount(), 0);
    QDesignerFormWindowInterface *late = m_designer->openForm(formUi(QStringLiteral("Late")));
    QVERIFY(late);
    late->cursor()->setProperty(QStringLiteral("objectName"), QStringLiteral("LateRenamed"));
    QVERIFY(!window->formNames().contains(QStringLiteral("Late")));
    QVERIFY(!window->formNames().contains(QStringLiteral("LateRenamed")));
    m_designer->closeForm(open);
    QVERIFY(window->formNames().contains(QStringLiteral("Early")));

    // Opened again: in step again.
    QVERIFY(openWindow() == window);
    QVERIFY(window->formNames().contains(QStringLiteral("LateRenamed")));
    QVERIFY(!window->formNames().contains(QStringLiteral("Early")));
    m_designer->closeForm(late);
    QVERIFY(!window->formNames().contains(QStringLiteral("LateRenamed")));
}

void TestExpertWindow::insertedComponentIsInTheSavedForm()
{
    m_expert->SetDefaultComp(QStringLiteral("TVexilRT"));
    m_expert->SetNumLang(3);
    TfrmVexil *window = openWindow();
    TvxCustomLang *inserted = window->InsertTVexil(QStringLiteral("Form2"));
    QVERIFY(inserted);
    QVERIFY(qobject_cast<TVexilRT *>(inserted));
    QCOMPARE(inserted->NumOfLanguages(), 3);
    QVERIFY(window->IsFormOpen(QStringLiteral("Form2")));
    QDesignerFormWindowInterface *form = window->formWindowOf(QStringLiteral("Form2"));
    QVERIFY(form->isDirty());
    QCOMPARE(cell(window, QStringLiteral("Form2"), TfrmVexil::colComponent),
             QStringLiteral("TVexilRT ") + inserted->objectName());
    QCOMPARE(cell(window, QStringLiteral("Form2"), TfrmVexil::colLanguages), QStringLiteral("3"));
    QCOMPARE(window->GetVexil(QStringLiteral("Form2")), inserted);

    QVERIFY(window->SaveForm(QStringLiteral("Form2")));
    QVERIFY(!form->isDirty());
    const TvxProjectForm saved = VexilProject::readForm(window->UiPath(QStringLiteral("Form2")));
    QVERIFY2(saved.state.hasComponent(), qPrintable(readFile(window->UiPath(QStringLiteral("Form2")))));
    QCOMPARE(saved.state.componentClass, QStringLiteral("TVexilRT"));
    QCOMPARE(saved.state.numLanguages, 3);
    QVERIFY(readFile(window->UiPath(QStringLiteral("Form2"))).contains(QLatin1String("<class>TVexilRT</class>")));

    // A second one is refused with a message, and nothing is added.
    QString message;
    onNextModal([&message](QWidget *box) {
        if (auto *messageBox = qobject_cast<QMessageBox *>(box))
            message = messageBox->text();
        box->close();
    });
    QVERIFY(!window->InsertTVexil(QStringLiteral("Form2")));
    QCOMPARE(message, QStringLiteral("The form Form2 already has a translation component."));
    QCOMPARE(form->mainContainer()->findChildren<TvxCustomLang *>().size(), 1);
    // An unknown form: nothing.
    QVERIFY(!window->InsertTVexil(QStringLiteral("NoSuchForm")));
}

void TestExpertWindow::gridEditorOnAnyCategory()
{
    TfrmVexil *window = openWindow();
    // The hints of a form not yet open: it opens, the editor edits, Apply
    // writes the table through the form window.
    QString caption;
    onNextModal([&caption](QWidget *editor) {
        auto *grid = qobject_cast<TvxEditorForm *>(editor);
        caption = editor->windowTitle();
        const int row = rowOf(grid, QStringLiteral("pushButton"));
        if (row >= 0)
            grid->model()->setCell(row, 2, QStringLiteral("Appuyez"));
        QTest::mouseClick(editor->findChild<QToolButton *>(QStringLiteral("sbOK")), Qt::LeftButton);
    });
    QVERIFY(window->EditCategory(QStringLiteral("Form1"), 1));
    QCOMPARE(caption, QStringLiteral("TVexil.Hints Editor"));
    QDesignerFormWindowInterface *form = window->formWindowOf(QStringLiteral("Form1"));
    QVERIFY(form && form->isDirty());
    QVERIFY(form->contents().contains(QLatin1String("Appuyez")));
    QVERIFY(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines).contains(QLatin1String("Hints")));

    // Cancelled: nothing written.
    const QString before = form->contents();
    onNextModal([](QWidget *editor) {
        QTest::mouseClick(editor->findChild<QToolButton *>(QStringLiteral("sbCancel")), Qt::LeftButton);
    });
    QVERIFY(!window->EditCategory(QStringLiteral("Form1"), 3));
    QCOMPARE(form->contents(), before);

    // A form without a component says so.
    QString message;
    onNextModal([&message](QWidget *box) {
        message = qobject_cast<QMessageBox *>(box) ? qobject_cast<QMessageBox *>(box)->text() : QString();
        box->close();
    });
    QVERIFY(!window->EditCategory(QStringLiteral("Form2"), 0));
    QCOMPARE(message, QStringLiteral("The form Form2 has no translation component."));
}

void TestExpertWindow::allFormsThroughOneFile()
{
    QVERIFY(writeFile(m_project->filePath(QStringLiteral("form3.ui")),
                      formUi(QStringLiteral("Form3"), QStringLiteral("TVexil"), 2,
                             {QStringLiteral("pushButton\tHello\tSalut\t")})));
    TfrmVexil *window = openWindow();
    const QString file = m_project->filePath(QStringLiteral("all.lng"));
    QCOMPARE(window->SaveAllTranslations(file), 2);
    const QString text = readFile(file);
    QVERIFY2(text.contains(QLatin1String("Form1.pushButton")) && text.contains(QLatin1String("Form3.pushButton")),
             qPrintable(text));
    QVERIFY(!text.contains(QLatin1String("Form2.")));

    // The tables change in Designer, then the file brings them back,
    // written through the form windows (saved with the form, undoable).
    TvxCustomLang *one = window->GetVexil(QStringLiteral("Form1"));
    TvxCustomLang *three = window->GetVexil(QStringLiteral("Form3"));
    QDesignerFormWindowInterface *form3 = window->formWindowOf(QStringLiteral("Form3"));
    form3->cursor()->setWidgetProperty(three, QStringLiteral("Captions"),
                                       QStringList{QStringLiteral("pushButton\tHello\tChanged\t")});
    QVERIFY(form3->contents().contains(QLatin1String("Changed")));
    form3->commandHistory()->clear();
    form3->setDirty(false);
    QCOMPARE(window->LoadAllTranslations(file), 2);
    QVERIFY(three->Captions()->lines().contains(QStringLiteral("pushButton\tHello\tSalut\t")));
    QVERIFY(form3->contents().contains(QLatin1String("Salut")));
    QVERIFY(!form3->contents().contains(QLatin1String("Changed")));
    QCOMPARE(three->Captions()->lines().size(), 1);
    QVERIFY(form3->commandHistory()->canUndo());
    QVERIFY(form3->isDirty());
    QVERIFY(one->Captions()->lines().contains(QStringLiteral("pushButton\tHello\t\t")));

    // Merging: the file wins its keys, the table keeps what the file lacks.
    form3->cursor()->setWidgetProperty(three, QStringLiteral("Captions"),
                                       QStringList{QStringLiteral("pushButton\tHello\tChanged\t"),
                                                   QStringLiteral("Form3\tOnly here\t\t")});
    QCOMPARE(window->MergeAllTranslations(file), 2);
    QVERIFY(three->Captions()->lines().contains(QStringLiteral("pushButton\tHello\tSalut\t")));
    QVERIFY(three->Captions()->lines().contains(QStringLiteral("Form3\tOnly here\t\t")));
    QVERIFY(form3->contents().contains(QLatin1String("Only here")));

    // A missing file: a clear message, nothing touched.
    QString message;
    onNextModal([&message](QWidget *box) {
        message = qobject_cast<QMessageBox *>(box) ? qobject_cast<QMessageBox *>(box)->text() : QString();
        box->close();
    });
    QCOMPARE(window->LoadAllTranslations(m_project->filePath(QStringLiteral("missing.lng"))), -1);
    QVERIFY(message.startsWith(QLatin1String("Cannot read")));
    QVERIFY(three->Captions()->lines().contains(QStringLiteral("Form3\tOnly here\t\t")));
}

void TestExpertWindow::openAllFormsAtStartUp()
{
    {
        TfrmVexil *window = openWindow();
        QVERIFY(!window->IsFormOpen(QStringLiteral("Form1")));
        QVERIFY(!window->IsFormOpen(QStringLiteral("Form2")));
    }
    m_expert.reset();
    m_designer->closeForms();
    m_expert = std::make_unique<TVexilExpert>(m_designer->core);
    m_expert->SetOpenAllForms(true);
    TfrmVexil *window = openWindow();
    QVERIFY(window->IsFormOpen(QStringLiteral("Form1")));
    QVERIFY(window->IsFormOpen(QStringLiteral("Form2")));
    QCOMPARE(m_designer->core->formWindowManager()->formWindowCount(), 2);
}

void TestExpertWindow::optionsStayOnTopAndPictures()
{
    TfrmVexil *window = openWindow();
    QVERIFY(window->isVisible());
    QVERIFY(!window->StayOnTop());
    window->SetStayOnTop(true);
    QVERIFY(window->StayOnTop());
    QVERIFY(window->isVisible());
    window->SetStayOnTop(false);
    QVERIFY(!window->StayOnTop());

    // Docked into Designer's main window and back.
    window->SetDocked(true);
    QVERIFY(window->isDocked());
    QCOMPARE(window->window(), m_main.get());
    window->SetDocked(false);
    QVERIFY(!window->isDocked());
    QVERIFY(window->isWindow());

    // The options button opens the options; Cancel leaves the menu item.
    QAction *item = m_expert->menuItem();
    QString caption;
    QStringList pages;
    onNextModal([&](QWidget *dialog) {
        caption = dialog->windowTitle();
        auto *options = qobject_cast<TfrmOptions *>(dialog);
        for (int i = 0; options && i < options->pages()->count(); ++i)
            pages << options->pages()->tabText(i);
        dialog->findChild<QPushButton *>(QStringLiteral("btnCancel"))->click();
    });
    window->findChild<QToolButton *>(QStringLiteral("sbOptions"))->click();
    QCOMPARE(caption, QStringLiteral("Options"));
    QCOMPARE(pages, (QStringList{QStringLiteral("Main"), QStringLiteral("TVexil")}));
    QCOMPARE(m_expert->menuItem(), item);

    // Pictures of the window with the forms listed and of the options.
    window->GetVexil(QStringLiteral("Form1"));
    window->selectForm(QStringLiteral("Form1"));
    window->resize(820, 260);
    QVERIFY(window->grab().save(QStringLiteral(VEXIL_SCREENSHOT_DIR "/expert-window.png")));
    TfrmOptions options(m_expert.get(), window);
    options.adjustSize();
    QVERIFY(options.grab().save(QStringLiteral(VEXIL_SCREENSHOT_DIR "/expert-options.png")));
}


void TestExpertWindow::sourceMenusWorkOnTheListedForms()
{
    const QString unit = m_project->path() + QStringLiteral("/form1.cpp");
    QVERIFY(writeFile(unit, QStringLiteral("#include \"form1.h\"\n\nForm1::Form1(QWidget *parent)\n"
                                           "    : QWidget(parent)\n{\n    setWindowTitle(tr(\"Orders list\"));\n}\n")));
    TfrmVexil *window = openWindow();
    QStringList titles;
    for (QAction *menu : window->menuBar()->actions())
        titles << menu->text();
    QVERIFY2(titles.contains(QLatin1String("&Source")) && titles.contains(QLatin1String("&Const section"))
                 && titles.contains(QLatin1String("&Tools")),
             qPrintable(titles.join(QLatin1Char(','))));

    // "&Source" / "&With form..." on the selected form, which is not open in
    // Designer: its unit is rewritten and its .ui gets the Strings.
    window->selectForm(QStringLiteral("Form1"));
    QString review, message;
    onNextModal([&](QWidget *found) {
        review = found->windowTitle();
        onNextModal([&message](QWidget *w) {
            auto *box = qobject_cast<QMessageBox *>(w);
            message = box ? box->text() : QString();
            w->close();
        });
        static_cast<QDialog *>(found)->accept();
    });
    auto *translate = window->findChild<QAction *>(QStringLiteral("Translatesource1"));
    QVERIFY(translate);
    translate->trigger();
    QVERIFY(!review.isEmpty());
    QCOMPARE(message, QStringLiteral("Source file translated. All string constants added to \"Strings\" property."));
    QVERIFY2(readFile(unit).contains(QLatin1String("tr(ui->Vexil1->GetText(\"IDS_0\" /* \"Orders list\" */ ))")),
             qPrintable(readFile(unit)));
    QVERIFY(readFile(m_project->path() + QStringLiteral("/form1.ui")).contains(QLatin1String("IDS_0\tOrders list\t")));
    // The list was read again.
    QVERIFY2(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines).contains(QLatin1String("Strings 1")),
             qPrintable(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines)));
}

void TestExpertWindow::closedDockComesBackFromTheMenuItem()
{
    m_main->show();
    TfrmVexil *window = openWindow();
    window->SetDocked(true);
    QVERIFY(window->isVisible());
    // The dock's own close button hides the dock, not the window in it.
    auto *dock = qobject_cast<QDockWidget *>(window->parentWidget());
    QVERIFY(dock);
    dock->close();
    QVERIFY(!window->isVisible());
    QCOMPARE(openWindow(), window);
    QVERIFY(window->isDocked());
    QVERIFY(window->isVisible());
    QCOMPARE(m_expert->notifier()->moduleNotifierCount(), m_designer->core->formWindowManager()->formWindowCount());
    window->SetDocked(false);
    m_main->hide();
}

void TestExpertWindow::formRenamedAndClosedUnsavedStaysListed()
{
    TfrmVexil *window = openWindow();
    QDesignerFormWindowInterface *form1 = window->OpenForm(QStringLiteral("Form1"));
    QVERIFY(form1);
    form1->cursor()->setProperty(QStringLiteral("objectName"), QStringLiteral("Renamed"));
    QVERIFY(window->formNames().contains(QStringLiteral("Renamed")));
    // Closed without saving: the file still holds Form1, and so does the list.
    QDesignerFormWindowManagerInterface *manager = m_designer->core->formWindowManager();
    manager->removeFormWindow(form1);
    delete form1;
    QCOMPARE(window->formNames(), (QStringList{QStringLiteral("Form1"), QStringLiteral("Form2")}));
    QCOMPARE(cell(window, QStringLiteral("Form1"), TfrmVexil::colLines), QStringLiteral("Captions 2"));

    // Deleted without being removed first: no longer shown as open.
    QDesignerFormWindowInterface *form2 = window->OpenForm(QStringLiteral("Form2"));
    QVERIFY(form2);
    QCOMPARE(cell(window, QStringLiteral("Form2"), TfrmVexil::colOpen), QStringLiteral("yes"));
    delete form2;
    QCOMPARE(cell(window, QStringLiteral("Form2"), TfrmVexil::colOpen), QString());
}

QTEST_MAIN(TestExpertWindow)
#include "tst_expertwindow.moc"
