// The expert's windows and commands: the review form's controls, marks and
// placement, and the six commands on a real project folder, one form of it
// open in a real Designer form editor.
#include "dialogdriver.h"

#include "vxexpertcommands.h"
#include "vxfoundform.h"
#include "vxprogresswindow.h"
#include "vxunusedwindow.h"
#include "vxtranslunits.h"

#include "vxcomp.h"
#include "vxsettings.h"
#include "vxuiedit.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtDesigner/QDesignerComponents>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtGui/QUndoStack>
#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include <memory>

using namespace Vexil::Expert;

namespace {

QString formUi(const QString &name, bool withComponent)
{
    const QString component = withComponent ? QStringLiteral(R"(
  <widget class="TVexil" name="Vexil1">
   <property name="geometry"><rect><x>200</x><y>10</y><width>28</width><height>28</height></rect></property>
  </widget>)")
                                            : QString();
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>%1</class>
 <widget class="QWidget" name="%1">
  <property name="geometry"><rect><x>0</x><y>0</y><width>300</width><height>200</height></rect></property>%2
 </widget>
 <customwidgets>
  <customwidget><class>TVexil</class><extends>QWidget</extends><header>vxcomp.h</header></customwidget>
 </customwidgets>
 <resources/>
 <connections/>
</ui>
)")
        .arg(name, component);
}

QString unitText(const QString &form)
{
    return QStringLiteral("#include \"%1.h\"\n\n%2::%2(QWidget *parent)\n    : QWidget(parent)\n{\n"
                          "    setWindowTitle(QStringLiteral(\"Orders\"));\n    label->setText(\"Hello\");\n}\n")
        .arg(form.toLower(), form);
}

QString headerText(const QString &form)
{
    return QStringLiteral("#pragma once\n#include <QtWidgets/QWidget>\n\nclass %1 : public QWidget\n{\n    Q_OBJECT\n"
                          "public:\n    explicit %1(QWidget *parent = nullptr);\n};\n")
        .arg(form);
}

QString readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

void writeAll(const QString &path, const QString &text)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(text.toUtf8());
}

// A project folder of forms; a form may be open in the test's form editor.
class FolderProject : public TvxExpertProject
{
public:
    QDir dir;
    QWidget *main = nullptr;
    QStringList selected;
    QHash<QString, QDesignerFormWindowInterface *> open;
    int refreshes = 0;
    QStringList inserted;

    QWidget *window() const override { return main; }
    QStringList selectedForms() const override { return selected; }
    TvxProjectForm form(const QString &name) const override
    {
        const QString base = dir.filePath(name.toLower());
        if (!QFile::exists(base + QStringLiteral(".ui")))
            return {};
        return {name, name, base + QStringLiteral(".ui"), base + QStringLiteral(".cpp"), base + QStringLiteral(".h")};
    }
    QStringList formsWithComponent() const override
    {
        QStringList names;
        for (const QString &ui : dir.entryList({QStringLiteral("*.ui")}, QDir::Files, QDir::Name)) {
            const QString text = readAll(dir.filePath(ui));
            if (!uiTranslationComponent(text).isEmpty())
                names << QFileInfo(ui).baseName().replace(0, 1, QFileInfo(ui).baseName().at(0).toUpper());
        }
        return names;
    }
    QStringList units() const override
    {
        QStringList files;
        for (const QString &f : dir.entryList({QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files, QDir::Name))
            files << dir.filePath(f);
        return files;
    }
    QDesignerFormWindowInterface *openFormWindow(const QString &name) const override { return open.value(name); }
    bool insertComponent(const QString &formName) override
    {
        inserted << formName;
        QString ui = readAll(form(formName).uiPath);
        ui.replace(QStringLiteral("</rect></property>\n </widget>"),
                   QStringLiteral("</rect></property>\n  <widget class=\"TVexil\" name=\"Vexil1\"/>\n </widget>"));
        writeAll(form(formName).uiPath, ui);
        return true;
    }
    void refresh() override { ++refreshes; }
};

// Closes the next message box and hands its text over.
void answerNextBox(QString *text, QMessageBox::StandardButton button = QMessageBox::Ok)
{
    onNextModal([text, button](QWidget *w) {
        auto *box = qobject_cast<QMessageBox *>(w);
        QVERIFY(box);
        *text = box->text();
        box->button(button) ? box->button(button)->click() : box->reject();
    });
}

} // namespace

class tst_ScanWindows : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void foundFormControls();
    void foundFormMarksDrawnAndDeleted();
    void foundFormReplaceAsksAfterEdits();
    void foundFormPlacementKept();
    void menus();
    void scanWithFormWritesUnitAndForm();
    void scanOfOpenFormGoesThroughDesigner();
    void closedFormTableKeepsItsDelimiter();
    void unitPickerAndNoForms();
    void unusedIdsWindowIsSingleAndModeless();
    void typeChange();

private:
    TvxFoundList sampleList() const;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<FolderProject> m_project;
    std::unique_ptr<QWidget> m_main;
    QDesignerFormEditorInterface *m_core = nullptr;
    QObject *m_integration = nullptr;
};

void tst_ScanWindows::initTestCase()
{
    QCoreApplication::addLibraryPath(QStringLiteral(VEXIL_PLUGIN_DIR));
    m_core = QDesignerComponents::createFormEditor(this);
    QVERIFY(m_core);
    m_integration = new QDesignerIntegration(m_core, this);
    QDesignerComponents::initializePlugins(m_core);
}

void tst_ScanWindows::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir->path());
    QDir().mkpath(m_dir->filePath(QStringLiteral("project")));
    m_main = std::make_unique<QWidget>();
    m_project = std::make_unique<FolderProject>();
    m_project->dir = QDir(m_dir->filePath(QStringLiteral("project")));
    m_project->main = m_main.get();
    for (const QString &form : {QStringLiteral("Orders"), QStringLiteral("Plain")}) {
        const QString base = m_project->dir.filePath(form.toLower());
        writeAll(base + QStringLiteral(".ui"), formUi(form, form == QLatin1String("Orders")));
        writeAll(base + QStringLiteral(".cpp"), unitText(form));
        writeAll(base + QStringLiteral(".h"), headerText(form));
    }
}

void tst_ScanWindows::cleanup()
{
    for (QDesignerFormWindowInterface *fw : std::as_const(m_project->open)) {
        m_core->formWindowManager()->removeFormWindow(fw);
        delete fw;
    }
    m_project->open.clear();
    m_main.reset();
}

void tst_ScanWindows::cleanupTestCase()
{
    delete m_integration;
    delete m_core;
}

TvxFoundList tst_ScanWindows::sampleList() const
{
    const QString src = QStringLiteral("void Form1::f()\n{\n    a(\"Open the file\");\n    b(\"Save changes?\");\n"
                                       "    c(\"Name\" \"s\");\n    d(\"A text longer than fifteen characters\");\n}\n");
    return TvxFoundList(scanStatements(src, callPrefix(QStringLiteral("Form1"), QStringLiteral("Vexil1"), true), 3).rows);
}

void tst_ScanWindows::foundFormControls()
{
    TvxFoundList list = sampleList();
    TfrmFound form(&list);
    QTableWidget *grid = form.grid();
    QCOMPARE(grid->rowCount(), 5);
    QCOMPARE(grid->columnCount(), 4);
    const QStringList headers{QStringLiteral("String ID:"), QStringLiteral("String constant:"),
                              QStringLiteral("Will be replaced by:"), QStringLiteral("Source line:")};
    const int extra[] = {10, 20, 50, 100};
    for (int c = 0; c < 4; ++c) {
        QCOMPARE(grid->horizontalHeaderItem(c)->text(), headers.at(c));
        QCOMPARE(grid->columnWidth(c), QFontMetrics(grid->horizontalHeader()->font()).horizontalAdvance(headers.at(c)) + extra[c]);
    }
    QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("IDS_3"));
    QCOMPARE(grid->item(1, 1)->text(), QStringLiteral("Save changes?"));
    QCOMPARE(grid->toolTip(), QStringLiteral("Right Click for activate popup menu..."));
    QCOMPARE(form.findChild<QPushButton *>(QStringLiteral("btOK"))->text(), QStringLiteral("&Replace"));
    QVERIFY(form.findChild<QPushButton *>(QStringLiteral("btOK"))->isDefault());
    QCOMPARE(form.findChild<QPushButton *>(QStringLiteral("btCancel"))->text(), QStringLiteral("&Cancel"));
    const QList<QPair<const char *, QString>> items{{"Delete1", QStringLiteral("Ctrl+Del")},
                                                    {"Markfordelete1", QStringLiteral("Ctrl+M")},
                                                    {"Invertselection1", QStringLiteral("Ctrl+I")},
                                                    {"TypecasttoPChar1", QString()},
                                                    {"StartID1", QString()}};
    for (const auto &item : items) {
        auto *a = form.findChild<QAction *>(QLatin1String(item.first));
        QVERIFY2(a, item.first);
        QCOMPARE(a->shortcut().toString(), item.second);
    }

    // Notes per column; drawing the grid outside an edit clears them.
    form.setEditNote(2);
    QCOMPARE(form.note(), QStringLiteral("Note: Everything written here, will be placed in source!"));
    form.setEditNote(0);
    QCOMPARE(form.note(), QString());
    form.setEditNote(1);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    grid->viewport()->repaint();
    QCOMPARE(form.note(), QString());

    // Start ID from the input box; a non-integer changes nothing.
    onNextModal([](QWidget *w) {
        auto *input = qobject_cast<QInputDialog *>(w);
        QVERIFY(input);
        QCOMPARE(input->windowTitle(), QStringLiteral("TVexil Expert"));
        QCOMPARE(input->labelText(), QStringLiteral("Input start ID (IDS_):"));
        QCOMPARE(input->textValue(), QStringLiteral("3"));
        input->setTextValue(QStringLiteral("20"));
        input->accept();
    });
    form.btIDClick();
    QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("IDS_20"));
    QVERIFY(grid->item(0, 2)->text().contains(QLatin1String("\"IDS_20\"")));
    QString box;
    onNextModal([&box](QWidget *w) {
        auto *input = qobject_cast<QInputDialog *>(w);
        QVERIFY(input);
        input->setTextValue(QStringLiteral("x1"));
        input->accept();
        answerNextBox(&box);
    });
    form.btIDClick();
    QCOMPARE(box, Msg::startIdNotInteger());
    QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("IDS_20"));

    // The cast keeps the join of "Name" "s" outside.
    grid->setCurrentCell(2, 0);
    form.TypecasttoPChar1Click();
    QVERIFY(grid->item(2, 2)->text().startsWith(QLatin1String("qPrintable(")));
    QVERIFY(grid->item(2, 2)->text().endsWith(QLatin1String(")) + ")));

    // A picture of the form with its rows, one marked.
    list.toggleMark(2);
    form.resize(900, 260);
    QApplication::processEvents();
    const QImage shot = form.grab().toImage();
    QVERIFY(!shot.isNull());
    shot.save(QStringLiteral(VEXIL_SCREENSHOT_DIR "/found-form.png"));
}

void tst_ScanWindows::foundFormMarksDrawnAndDeleted()
{
    TvxFoundList list = sampleList();
    TfrmFound form(&list);
    form.resize(800, 300);
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QTableWidget *grid = form.grid();
    // Ctrl+click marks row 2, Ctrl+M on row 4.
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      grid->visualRect(grid->model()->index(1, 1)).center());
    grid->setCurrentCell(3, 0);
    QTest::keyClick(&form, Qt::Key_M, Qt::ControlModifier);
    QCOMPARE(list.marks(), (QList<int>{2, 4}));
    // Marked rows are filled with the highlight colour; others are not.
    const QImage image = grid->viewport()->grab().toImage();
    const QColor highlight = grid->palette().color(QPalette::Active, QPalette::Highlight);
    const QRect marked = grid->visualRect(grid->model()->index(1, 3));
    const QRect plain = grid->visualRect(grid->model()->index(2, 3));
    QCOMPARE(image.pixelColor(marked.right() - 3, marked.bottom() - 2), highlight);
    QVERIFY(image.pixelColor(plain.right() - 3, plain.bottom() - 2) != highlight);

    // Shift+click with two marks: the list's index error, shown in a box.
    QString box;
    answerNextBox(&box);
    form.gridClick(5, Qt::ShiftModifier);
    QVERIFY2(box.startsWith(QLatin1String("List index out of bounds")), qPrintable(box));

    // Delete asks for the marked rows; No keeps them.
    list.invertMarks();
    list.invertMarks();
    const int marks = int(list.marks().size());
    QVERIFY(marks > 0);
    answerNextBox(&box, QMessageBox::No);
    form.btDeleteClick();
    QCOMPARE(box, QStringLiteral("Delete selected rows?"));
    QCOMPARE(grid->rowCount(), 5);
    answerNextBox(&box, QMessageBox::Yes);
    form.btDeleteClick();
    QCOMPARE(grid->rowCount(), 5 - marks);

    // Without marks the current row is named.
    while (!list.marks().isEmpty())
        list.toggleMark(list.marks().first());
    grid->setCurrentCell(0, 0);
    const QString id = grid->item(0, 0)->text();
    answerNextBox(&box, QMessageBox::Yes);
    form.btDeleteClick();
    QCOMPARE(box, QStringLiteral("Delete selected row (") + id + QStringLiteral(")?"));
    while (grid->rowCount() > 0) {
        answerNextBox(&box, QMessageBox::Yes);
        form.btDeleteClick();
    }
    // No rows: delete and start ID are off.
    QVERIFY(!form.findChild<QPushButton *>(QStringLiteral("btDelete"))->isEnabled());
    QVERIFY(!form.findChild<QPushButton *>(QStringLiteral("btID"))->isEnabled());
    QVERIFY(!form.findChild<QAction *>(QStringLiteral("Delete1"))->isEnabled());
    QVERIFY(!form.findChild<QAction *>(QStringLiteral("StartID1"))->isEnabled());
}

void tst_ScanWindows::foundFormReplaceAsksAfterEdits()
{
    TvxFoundList list = sampleList();
    TfrmFound form(&list);
    form.btOKClick(); // unchanged: closes at once
    QCOMPARE(form.result(), int(QDialog::Accepted));
    form.setResult(0);
    form.grid()->item(0, 0)->setText(QStringLiteral("MY_ID"));
    QCOMPARE(list.row(1).id, QStringLiteral("MY_ID"));
    QVERIFY(form.grid()->item(0, 2)->text().contains(QLatin1String("\"MY_ID\"")));
    QString box;
    answerNextBox(&box, QMessageBox::No);
    form.btOKClick();
    QCOMPARE(box, Msg::changedColumns());
    QCOMPARE(form.result(), 0);
    answerNextBox(&box, QMessageBox::Yes);
    form.btOKClick();
    QCOMPARE(form.result(), int(QDialog::Accepted));
}

void tst_ScanWindows::foundFormPlacementKept()
{
    TvxFoundList list = sampleList();
    {
        TfrmFound form(&list);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        form.resize(640, 333);
        QApplication::processEvents();
    }
    auto settings = Vexil::openSettingsKey(Vexil::toolsKeyPath() + QStringLiteral("\\FoundForm"));
    QCOMPARE(settings->value(QStringLiteral("Height")).toInt(), 333);
    TfrmFound again(&list);
    again.show();
    QVERIFY(QTest::qWaitForWindowExposed(&again));
    QTRY_COMPARE(again.height(), 333);
}

void tst_ScanWindows::menus()
{
    TvxExpertCommands commands(m_project.get());
    QMenuBar bar;
    buildExpertMenus(&bar, &commands);
    QStringList texts;
    for (QAction *top : bar.actions()) {
        texts << top->text();
        for (QAction *a : top->menu()->actions()) {
            texts << QStringLiteral("  ") + a->text();
            if (a->menu()) {
                for (QAction *b : a->menu()->actions())
                    texts << QStringLiteral("    ") + b->text();
            }
        }
    }
    QCOMPARE(texts, (QStringList{"&Source", "  &With form...", "  W&ithout form...", "&Const section",
                                 "  With &Form...", "  With&out Form...", "&Tools", "  &Check unused IDs",
                                 "  Change &TVexil type", "    &1. To  TVexil", "    &2. To  TVexilRTSE",
                                 "    &3. To  TVexilRT", "    &4. To  TVexilLinked", "    &5. To  TVexilTLV"}));
}

void tst_ScanWindows::scanWithFormWritesUnitAndForm()
{
    TvxExpertCommands commands(m_project.get());
    m_project->selected = {QStringLiteral("Orders"), QStringLiteral("Plain")};
    QString progressSeen, first, second;
    // Orders: review accepted; Plain gets a component first, then is reviewed.
    onNextModal([&](QWidget *w) {
        auto *found = qobject_cast<TfrmFound *>(w);
        QVERIFY(found);
        QCOMPARE(found->grid()->rowCount(), 2);
        found->findChild<QPushButton *>(QStringLiteral("btOK"))->click();
        onNextModal([&](QWidget *box) {
            first = qobject_cast<QMessageBox *>(box)->text();
            progressSeen = commands.progressWindow()->text();
            qobject_cast<QMessageBox *>(box)->accept();
            onNextModal([&](QWidget *w2) {
                auto *found2 = qobject_cast<TfrmFound *>(w2);
                QVERIFY(found2);
                found2->findChild<QPushButton *>(QStringLiteral("btCancel"))->click();
            });
        });
    });
    commands.Translatesource1Click();
    QCOMPARE(first, Msg::translated());
    QCOMPARE(progressSeen, QString()); // hidden before the message
    QCOMPARE(m_project->inserted, QStringList{QStringLiteral("Plain")});
    QCOMPARE(m_project->refreshes, 1);
    const QString unit = readAll(m_project->form(QStringLiteral("Orders")).cppPath);
    QVERIFY2(unit.contains(QLatin1String("QStringLiteral(ui->Vexil1->GetText(\"IDS_0\" /* \"Orders\" */ ))")),
             qPrintable(unit));
    QCOMPARE(uiStringList(readAll(m_project->form(QStringLiteral("Orders")).uiPath), QStringLiteral("Vexil1"),
                          QStringLiteral("Strings")),
             (QStringList{QStringLiteral("IDS_0\tOrders\t"), QStringLiteral("IDS_1\tHello\t")}));
    // The cancelled review changed nothing of Plain's unit.
    QCOMPARE(readAll(m_project->form(QStringLiteral("Plain")).cppPath), unitText(QStringLiteral("Plain")));
    Q_UNUSED(second);
}

void tst_ScanWindows::scanOfOpenFormGoesThroughDesigner()
{
    QDesignerFormWindowManagerInterface *manager = m_core->formWindowManager();
    QDesignerFormWindowInterface *fw = manager->createFormWindow(nullptr);
    manager->addFormWindow(fw);
    QVERIFY(fw->setContents(readAll(m_project->form(QStringLiteral("Orders")).uiPath)));
    fw->setDirty(false);
    fw->commandHistory()->clear();
    m_project->open.insert(QStringLiteral("Orders"), fw);
    auto *vexil = fw->mainContainer()->findChild<TVexil *>(QStringLiteral("Vexil1"));
    QVERIFY(vexil);
    vexil->AddString(QStringLiteral("OLD"), {QStringLiteral("old")});

    TvxExpertCommands commands(m_project.get());
    m_project->selected = {QStringLiteral("Orders")};
    QString box;
    onNextModal([&](QWidget *w) {
        auto *found = qobject_cast<TfrmFound *>(w);
        QVERIFY(found);
        QCOMPARE(found->grid()->item(0, 0)->text(), QStringLiteral("IDS_1")); // counted from the live table
        found->accept();
        answerNextBox(&box);
    });
    const QString uiBefore = readAll(m_project->form(QStringLiteral("Orders")).uiPath);
    commands.Translatesource1Click();
    QCOMPARE(box, Msg::translated());
    QCOMPARE(vexil->Strings()->lines(), (QStringList{QStringLiteral("OLD\told\t"), QStringLiteral("IDS_1\tOrders\t"),
                                                     QStringLiteral("IDS_2\tHello\t")}));
    // One undoable change in Designer, the form marked changed; the file is
    // Designer's to save.
    QCOMPARE(fw->commandHistory()->count(), 1);
    QVERIFY(fw->isDirty());
    QCOMPARE(readAll(m_project->form(QStringLiteral("Orders")).uiPath), uiBefore);

    // While it is open, its type is not changed.
    answerNextBox(&box);
    commands.ToTVexil1Click(2);
    QCOMPARE(box, Msg::fileShouldBeClosed());
    QCOMPARE(uiWidgetClass(readAll(m_project->form(QStringLiteral("Orders")).uiPath), QStringLiteral("Vexil1")),
             QStringLiteral("TVexil"));
}

void tst_ScanWindows::closedFormTableKeepsItsDelimiter()
{
    // A closed form whose component splits its lines at '|': the scan and
    // the unused check read and write its table with that delimiter.
    const QString uiPath = m_project->form(QStringLiteral("Orders")).uiPath;
    QString ui = readAll(uiPath);
    ui.replace(QStringLiteral("<widget class=\"TVexil\" name=\"Vexil1\">"),
               QStringLiteral("<widget class=\"TVexil\" name=\"Vexil1\">\n   <property name=\"LangDelim\">"
                              "<char><unicode>124</unicode></char></property>"));
    QVERIFY(setUiStringList(&ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"),
                            {QStringLiteral("OLD|old|"), QStringLiteral("IDS_1|Hello|")}));
    writeAll(uiPath, ui);

    TvxExpertCommands commands(m_project.get());
    TvxExpertCommands::Component component;
    QVERIFY(commands.componentOf(QStringLiteral("Orders"), &component));
    QCOMPARE(component.delimiter, QLatin1Char('|'));

    m_project->selected = {QStringLiteral("Orders")};
    QString box;
    onNextModal([&](QWidget *w) {
        auto *found = qobject_cast<TfrmFound *>(w);
        QVERIFY(found);
        found->accept();
        answerNextBox(&box);
    });
    commands.Translatesource1Click();
    QCOMPARE(box, Msg::translated());
    QCOMPARE(uiStringList(readAll(uiPath), QStringLiteral("Vexil1"), QStringLiteral("Strings")),
             (QStringList{QStringLiteral("OLD|old|"), QStringLiteral("IDS_1|Hello|"), QStringLiteral("IDS_2|Orders|"),
                          QStringLiteral("IDS_3|Hello|")}));

    // Identifiers end at the '|': the scan's own calls carry a comment
    // before their parenthesis, so all four count as unused.
    commands.CheckunusedIDs1Click();
    QVERIFY(TvxUnusedIdsWindow::existing());
    QCOMPARE(TvxUnusedIdsWindow::existing()->identifiers(),
             (QStringList{QStringLiteral("OLD"), QStringLiteral("IDS_1"), QStringLiteral("IDS_2"),
                          QStringLiteral("IDS_3")}));
    TvxUnusedIdsWindow::existing()->close();
    QTRY_VERIFY(!TvxUnusedIdsWindow::existing());
}

void tst_ScanWindows::unitPickerAndNoForms()
{
    TvxExpertCommands commands(m_project.get());
    onNextModal([&](QWidget *w) {
        auto *picker = qobject_cast<TfrmTranslUnits *>(w);
        QVERIFY(picker);
        QCOMPARE(picker->windowTitle(), QStringLiteral("Translating Units without Form"));
        QCOMPARE(picker->forms()->count(), 1);
        QCOMPARE(picker->forms()->currentText(), QStringLiteral("Orders"));
        picker->units()->setCurrentIndex(picker->units()->findText(QStringLiteral("plain.cpp")));
        picker->accept();
        onNextModal([](QWidget *w2) {
            auto *found = qobject_cast<TfrmFound *>(w2);
            QVERIFY(found);
            // Another unit fetches through the run-time look-up of the form.
            QVERIFY(found->grid()->item(0, 2)->text().startsWith(QLatin1String("VEXIL_FORM(Orders)->GetText(")));
            found->reject();
        });
    });
    commands.TranslateUnit1Click();
    QCOMPARE(readAll(m_project->form(QStringLiteral("Plain")).cppPath), unitText(QStringLiteral("Plain")));

    QFile::remove(m_project->form(QStringLiteral("Orders")).uiPath);
    QString box;
    answerNextBox(&box);
    commands.WithoutForm1Click();
    QCOMPARE(box, Msg::noFormsWithVexil());
}

void tst_ScanWindows::unusedIdsWindowIsSingleAndModeless()
{
    TvxExpertCommands commands(m_project.get());
    m_project->selected = {QStringLiteral("Plain")};
    QString box;
    answerNextBox(&box);
    commands.CheckunusedIDs1Click();
    QCOMPARE(box, Msg::formNotTranslated().arg(QStringLiteral("Plain")));

    m_project->selected = {QStringLiteral("Orders")};
    answerNextBox(&box);
    commands.CheckunusedIDs1Click(); // empty table
    QCOMPARE(box, Msg::allIdsUsed().arg(QStringLiteral("Orders")));
    QVERIFY(!TvxUnusedIdsWindow::existing());

    QString ui = readAll(m_project->form(QStringLiteral("Orders")).uiPath);
    QVERIFY(setUiStringList(&ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"),
                            {QStringLiteral("IDS_1\ta\t"), QStringLiteral("IDS_2\tb\t")}));
    writeAll(m_project->form(QStringLiteral("Orders")).uiPath, ui);
    writeAll(m_project->form(QStringLiteral("Orders")).cppPath,
             QStringLiteral("void f()\n{\n    x(ui->Vexil1->GetText(\"IDS_2\"));\n}\n"));
    commands.CheckunusedIDs1Click();
    TvxUnusedIdsWindow *window = TvxUnusedIdsWindow::existing();
    QVERIFY(window);
    QVERIFY(window->isVisible());
    QVERIFY(!window->isModal());
    QCOMPARE(window->windowTitle(), QStringLiteral("Unused string identifiers"));
    QCOMPARE(window->grid()->horizontalHeaderItem(0)->text(), QStringLiteral("String ID:"));
    QCOMPARE(window->identifiers(), QStringList{QStringLiteral("IDS_1")});
    commands.CheckunusedIDs1Click();
    QCOMPARE(TvxUnusedIdsWindow::existing(), window);
    QCOMPARE(m_main->findChildren<TvxUnusedIdsWindow *>().size(), 1);
    window->close();
    QTRY_VERIFY(!TvxUnusedIdsWindow::existing());
}

void tst_ScanWindows::typeChange()
{
    TvxExpertCommands commands(m_project.get());
    m_project->selected = {QStringLiteral("Orders")};
    commands.ToTVexil1Click(4);
    const QString ui = readAll(m_project->form(QStringLiteral("Orders")).uiPath);
    QCOMPARE(uiWidgetClass(ui, QStringLiteral("Vexil1")), QStringLiteral("TVexilTLV"));
    QVERIFY(ui.contains(QLatin1String("<header>vxvexiltlv.h</header>")));
    QString box;
    m_project->selected = {QStringLiteral("Plain")};
    answerNextBox(&box);
    commands.ToTVexil1Click(0);
    QCOMPARE(box, Msg::formNotTranslated().arg(QStringLiteral("Plain")));
}

QTEST_MAIN(tst_ScanWindows)
#include "tst_scanwindows.moc"
