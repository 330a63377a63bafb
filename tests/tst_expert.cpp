// The expert as Designer runs it: its settings with their defaults and
// kept quirks, its identity, its menu item in Designer's main menu and the
// options form that moves it.
#include "designercore.h"
#include "dialogdriver.h"

#include "vxexpert.h"
#include "vxexpertwindow.h"
#include "vxoptions.h"
#include "vxsettings.h"

#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolButton>

#include <memory>

namespace {

std::unique_ptr<QSettings> expertKey()
{
    return Vexil::openSettingsKey(Vexil::toolsKeyPath());
}

// The values the expert's key holds, as text.
QMap<QString, QString> storedValues()
{
    QMap<QString, QString> values;
    auto settings = expertKey();
    for (const QString &key : settings->childKeys())
        values.insert(key, settings->value(key).toString());
    return values;
}

// A main window with Designer's menus, each holding three commands.
QMainWindow *designerLikeWindow()
{
    auto *window = new QMainWindow;
    const QStringList titles{QStringLiteral("&File"),     QStringLiteral("&Edit"),   QStringLiteral("F&orm"),
                             QStringLiteral("&View"),     QStringLiteral("&Settings"), QStringLiteral("&Window"),
                             QStringLiteral("&Help")};
    for (const QString &title : titles) {
        QMenu *menu = window->menuBar()->addMenu(title);
        for (int i = 0; i < 3; ++i)
            menu->addAction(QStringLiteral("%1 %2").arg(title).arg(i));
    }
    return window;
}

QMenu *menuHolding(QMainWindow *window, QAction *item)
{
    for (QAction *action : window->menuBar()->actions()) {
        if (action->menu() && action->menu()->actions().contains(item))
            return action->menu();
    }
    return nullptr;
}

QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QPushButton *button(QDialog *dialog, const char *name)
{
    return dialog->findChild<QPushButton *>(QLatin1String(name));
}

} // namespace

class TestExpert : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void defaultsWithAnEmptyKeyAndIdentity();
    void settersWriteOnlyChanges();
    void openAllFormsWritesUseCustomsValue();
    void readingStopsAtAMalformedNumberOrSwitch();
    void menuItemGoesIntoTheNamedSection();
    void optionsOkMovesTheItemAndCancelChangesNothing();
    void optionControls();
    void pluginStartsOneExpert();

private:
    std::unique_ptr<DesignerCore> m_designer;
    std::unique_ptr<QMainWindow> m_main;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestExpert::initTestCase()
{
    m_designer = std::make_unique<DesignerCore>();
    QVERIFY(m_designer->core);
}

void TestExpert::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir->path());
    m_main.reset(designerLikeWindow());
    m_designer->core->setTopLevel(m_main.get());
}

void TestExpert::cleanupTestCase()
{
    m_designer->core->setTopLevel(nullptr);
    m_main.reset();
    m_designer.reset();
}

void TestExpert::defaultsWithAnEmptyKeyAndIdentity()
{
    TVexilExpert expert(nullptr);
    QCOMPARE(expert.DefNumLang(), 2);
    QCOMPARE(expert.ShortCut(), QKeySequence(Qt::CTRL | Qt::Key_L));
    QCOMPARE(expert.MenuSection(), QStringLiteral("ToolsMenu"));
    QCOMPARE(expert.OpenAllForms(), false);
    QCOMPARE(expert.UseCustom(), false);
    QCOMPARE(expert.DefaultComponent(), QStringLiteral("TVexil"));
    // Starting writes nothing.
    QVERIFY(storedValues().isEmpty());
    // No Designer, no menu item.
    QVERIFY(!expert.menuItem());

    QVERIFY(expert.GetName().startsWith(QLatin1String("TVexil Expert")));
    QCOMPARE(expert.GetIDString(), QStringLiteral("Delphi3.VexilAddInExpert"));
    QVERIFY(!expert.GetAuthor().isEmpty());
    QVERIFY(expert.GetComment().isEmpty() && expert.GetPage().isEmpty() && expert.GetMenuText().isEmpty());
    QVERIFY(expert.GetGlyph().isNull());
    QCOMPARE(expert.GetStyle(), TVexilExpert::esAddIn);
    QCOMPARE(int(expert.GetStyle()), 3);
    QCOMPARE(int(expert.GetState()), 0);
    expert.Execute();
}

void TestExpert::settersWriteOnlyChanges()
{
    TVexilExpert expert(nullptr);
    // The same values write nothing.
    expert.SetNumLang(2);
    expert.SetShortCut(QKeySequence(Qt::CTRL | Qt::Key_L));
    expert.SetMenuSection(QStringLiteral("ToolsMenu"));
    expert.SetOpenAllForms(false);
    expert.SetDefaultComp(QStringLiteral("TVexil"));
    expert.SetUseCustom(false, QString());
    QVERIFY(storedValues().isEmpty());

    expert.SetNumLang(4);
    expert.SetShortCut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    expert.SetMenuSection(QStringLiteral("HelpMenu"));
    expert.SetDefaultComp(QStringLiteral("TVexilTLV"));
    expert.SetUseCustom(true, QStringLiteral("/tmp/custom.lng"));
    // With no switch stored the reading stops before the default class.
    QCOMPARE(TVexilExpert(nullptr).DefaultComponent(), QStringLiteral("TVexil"));
    expert.SetOpenAllForms(true);
    const QMap<QString, QString> values = storedValues();
    QCOMPARE(values.value(QStringLiteral("DefNumLang")), QStringLiteral("4"));
    QCOMPARE(values.value(QStringLiteral("ShortCut")), QStringLiteral("Ctrl+Shift+T"));
    QCOMPARE(values.value(QStringLiteral("MenuSection")), QStringLiteral("HelpMenu"));
    QCOMPARE(values.value(QStringLiteral("DefaultComponent")), QStringLiteral("TVexilTLV"));
    QCOMPARE(values.value(QStringLiteral("UseCustom")), QStringLiteral("true"));
    QCOMPARE(values.value(QStringLiteral("UserFile")), QStringLiteral("/tmp/custom.lng"));

    // A new expert reads them back, except the custom file, which is never read.
    TVexilExpert again(nullptr);
    QCOMPARE(again.DefNumLang(), 4);
    QCOMPARE(again.ShortCut(), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_T));
    QCOMPARE(again.MenuSection(), QStringLiteral("HelpMenu"));
    QCOMPARE(again.DefaultComponent(), QStringLiteral("TVexilTLV"));
    QCOMPARE(again.UseCustom(), false);
    QVERIFY(again.UserFile().isEmpty());

    // A value changed behind the expert's back is not written again when
    // the expert's own value is set.
    expertKey()->setValue(QStringLiteral("DefNumLang"), 9);
    again.SetNumLang(4);
    QCOMPARE(storedValues().value(QStringLiteral("DefNumLang")), QStringLiteral("9"));
}

void TestExpert::openAllFormsWritesUseCustomsValue()
{
    {
        TVexilExpert expert(nullptr);
        expert.SetNumLang(3); // so the reading reaches "OpenAllForms"
        expert.SetOpenAllForms(true);
        QCOMPARE(expert.OpenAllForms(), true);
        QCOMPARE(storedValues().value(QStringLiteral("OpenAllForms")), QStringLiteral("false"));
    }
    QCOMPARE(TVexilExpert(nullptr).OpenAllForms(), false);
    {
        TVexilExpert expert(nullptr);
        expert.SetUseCustom(true, QString());
        expert.SetOpenAllForms(true);
        QCOMPARE(storedValues().value(QStringLiteral("OpenAllForms")), QStringLiteral("true"));
    }
    QCOMPARE(TVexilExpert(nullptr).OpenAllForms(), true);
}

void TestExpert::readingStopsAtAMalformedNumberOrSwitch()
{
    {
        auto settings = expertKey();
        settings->setValue(QStringLiteral("MenuSection"), QStringLiteral("FileMenu"));
        settings->setValue(QStringLiteral("ShortCut"), QStringLiteral("Ctrl+K"));
        settings->setValue(QStringLiteral("DefNumLang"), QStringLiteral("three"));
        settings->setValue(QStringLiteral("OpenAllForms"), true);
        settings->setValue(QStringLiteral("DefaultComponent"), QStringLiteral("TVexilRT"));
    }
    TVexilExpert expert(nullptr);
    QCOMPARE(expert.MenuSection(), QStringLiteral("FileMenu"));
    QCOMPARE(expert.ShortCut(), QKeySequence(Qt::CTRL | Qt::Key_K));
    QCOMPARE(expert.DefNumLang(), 2);
    QCOMPARE(expert.OpenAllForms(), false);
    QCOMPARE(expert.DefaultComponent(), QStringLiteral("TVexil"));

    // A good number and a bad switch: the number is taken, the rest not.
    expertKey()->setValue(QStringLiteral("DefNumLang"), 5);
    expertKey()->setValue(QStringLiteral("OpenAllForms"), QStringLiteral("maybe"));
    TVexilExpert second(nullptr);
    QCOMPARE(second.DefNumLang(), 5);
    QCOMPARE(second.OpenAllForms(), false);
    QCOMPARE(second.DefaultComponent(), QStringLiteral("TVexil"));

    // Empty strings keep the defaults; all good values are read.
    {
        auto settings = expertKey();
        settings->setValue(QStringLiteral("MenuSection"), QString());
        settings->setValue(QStringLiteral("ShortCut"), QString());
        settings->setValue(QStringLiteral("OpenAllForms"), true);
        settings->setValue(QStringLiteral("DefaultComponent"), QString());
    }
    TVexilExpert third(nullptr);
    QCOMPARE(third.MenuSection(), QStringLiteral("ToolsMenu"));
    QCOMPARE(third.ShortCut(), QKeySequence(Qt::CTRL | Qt::Key_L));
    QCOMPARE(third.OpenAllForms(), true);
    QCOMPARE(third.DefaultComponent(), QStringLiteral("TVexil"));
    expertKey()->setValue(QStringLiteral("DefaultComponent"), QStringLiteral("TVexilLinked"));
    QCOMPARE(TVexilExpert(nullptr).DefaultComponent(), QStringLiteral("TVexilLinked"));
}

void TestExpert::menuItemGoesIntoTheNamedSection()
{
    {
        TVexilExpert expert(m_designer->core);
        QAction *item = expert.menuItem();
        QVERIFY(item);
        // The default section is Designer's Settings menu, third place.
        QMenu *menu = menuHolding(m_main.get(), item);
        QVERIFY(menu);
        QCOMPARE(plain(menu->title()), QStringLiteral("Settings"));
        QCOMPARE(menu->actions().indexOf(item), 2);
        QCOMPARE(item->text(), QStringLiteral("T&Vexil Expert"));
        QCOMPARE(item->objectName(), QStringLiteral("VexilExpertMenuItem"));
        QCOMPARE(item->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_L));
        QVERIFY(item->isEnabled() && item->isVisible());

        // Every section names one of Designer's menus.
        for (const QString &section : TVexilExpert::menuSections()) {
            expert.SetMenuSection(section);
            expert.RemoveSettings();
            QVERIFY(!expert.menuItem());
            expert.Configure();
            QVERIFY2(expert.menuItem(), qPrintable(section));
            QCOMPARE(plain(menuHolding(m_main.get(), expert.menuItem())->title()),
                     TVexilExpert::designerMenuFor(section));
        }
        // A section Designer lacks: no item.
        expert.SetMenuSection(QStringLiteral("DatabaseMenu"));
        expert.RemoveSettings();
        expert.Configure();
        QVERIFY(!expert.menuItem());

        // The item opens the main window.
        expert.SetMenuSection(QStringLiteral("ToolsMenu"));
        expert.Configure();
        expert.menuItem()->trigger();
        QVERIFY(expert.mainWindow());
        QVERIFY(expert.mainWindow()->isVisible());
    }
    // The expert's end takes its item with it.
    for (QAction *action : m_main->menuBar()->actions()) {
        for (QAction *entry : action->menu()->actions())
            QVERIFY(entry->objectName() != QLatin1String("VexilExpertMenuItem"));
    }
}

void TestExpert::optionsOkMovesTheItemAndCancelChangesNothing()
{
    TVexilExpert expert(m_designer->core);
    QVERIFY(expert.menuItem());

    // Cancel: nothing changes, nothing is written.
    {
        TfrmOptions options(&expert);
        options.cbMenuItems()->setCurrentText(QStringLiteral("FileMenu"));
        options.edNLang()->setValue(7);
        options.reject();
    }
    QCOMPARE(expert.MenuSection(), QStringLiteral("ToolsMenu"));
    QCOMPARE(expert.DefNumLang(), 2);
    QVERIFY(storedValues().isEmpty());

    // OK with the values as they were: the item is rebuilt, nothing written.
    {
        TfrmOptions options(&expert);
        button(&options, "btnOK")->click();
    }
    QVERIFY(storedValues().isEmpty());
    QCOMPARE(plain(menuHolding(m_main.get(), expert.menuItem())->title()), QStringLiteral("Settings"));

    // OK with a new section and shortcut: the item moves at once.
    {
        TfrmOptions options(&expert);
        options.cbMenuItems()->setCurrentText(QStringLiteral("FileMenu"));
        options.hkInMenu()->setKeySequence(QKeySequence(Qt::CTRL | Qt::Key_E));
        options.edNLang()->setValue(3);
        options.cbDefTVexil()->setCurrentText(QStringLiteral("TVexilRTSE"));
        options.cbOpenAll()->setChecked(true);
        button(&options, "btnOK")->click();
        QCOMPARE(options.result(), int(QDialog::Accepted));
    }
    QAction *item = expert.menuItem();
    QVERIFY(item);
    QMenu *file = menuHolding(m_main.get(), item);
    QCOMPARE(plain(file->title()), QStringLiteral("File"));
    QCOMPARE(file->actions().indexOf(item), 2);
    QCOMPARE(item->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_E));
    // Only one item anywhere.
    int items = 0;
    for (QAction *action : m_main->menuBar()->actions()) {
        for (QAction *entry : action->menu()->actions())
            items += entry->objectName() == QLatin1String("VexilExpertMenuItem");
    }
    QCOMPARE(items, 1);
    QCOMPARE(expert.DefNumLang(), 3);
    QCOMPARE(expert.DefaultComponent(), QStringLiteral("TVexilRTSE"));
    QCOMPARE(expert.OpenAllForms(), true);
    const QMap<QString, QString> values = storedValues();
    QCOMPARE(values.value(QStringLiteral("MenuSection")), QStringLiteral("FileMenu"));
    QCOMPARE(values.value(QStringLiteral("ShortCut")), QStringLiteral("Ctrl+E"));
    QCOMPARE(values.value(QStringLiteral("DefNumLang")), QStringLiteral("3"));
    QCOMPARE(values.value(QStringLiteral("DefaultComponent")), QStringLiteral("TVexilRTSE"));
    QCOMPARE(values.value(QStringLiteral("OpenAllForms")), QStringLiteral("false"));
}

void TestExpert::optionControls()
{
    TVexilExpert expert(nullptr);
    expert.SetDefaultComp(QString());
    TfrmOptions options(&expert);
    // Opening sets an empty default class to TVexil.
    QCOMPARE(expert.DefaultComponent(), QStringLiteral("TVexil"));
    QCOMPARE(options.windowTitle(), QStringLiteral("Options"));
    QCOMPARE(options.pages()->count(), 2);
    QCOMPARE(options.pages()->tabText(0), QStringLiteral("Main"));
    QCOMPARE(options.pages()->tabText(1), QStringLiteral("TVexil"));
    QStringList sections;
    for (int i = 0; i < options.cbMenuItems()->count(); ++i) {
        sections << options.cbMenuItems()->itemText(i);
        QVERIFY(!options.cbMenuItems()->itemIcon(i).isNull());
    }
    QCOMPARE(sections, TVexilExpert::menuSections());
    QCOMPARE(options.cbMenuItems()->currentText(), QStringLiteral("ToolsMenu"));
    QCOMPARE(options.hkInMenu()->keySequence(), QKeySequence(Qt::CTRL | Qt::Key_L));
    QCOMPARE(options.edNLang()->value(), 2);
    QCOMPARE(options.edNLang()->minimum(), 1);
    QCOMPARE(options.edNLang()->maximum(), 999);
    QVERIFY(!options.edNLang()->wrapping());
    QStringList classes;
    for (int i = 0; i < options.cbDefTVexil()->count(); ++i)
        classes << options.cbDefTVexil()->itemText(i);
    QCOMPARE(classes, (QStringList{QStringLiteral("TVexil"), QStringLiteral("TVexilRTSE"), QStringLiteral("TVexilRT"),
                                   QStringLiteral("TVexilLinked"), QStringLiteral("TVexilTLV")}));
    QCOMPARE(options.cbOpenAll()->text(), QStringLiteral("O&pen all project forms at startup."));

    // The nine pictures are nine different 16 by 16 cells of one strip.
    const QImage strip = TfrmOptions::sectionStrip().toImage();
    QCOMPARE(strip.size(), QSize(9 * 16, 16));
    QSet<QByteArray> cells;
    for (int i = 0; i < 9; ++i) {
        const QImage cell = strip.copy(i * 16, 0, 16, 16).convertToFormat(QImage::Format_ARGB32);
        cells.insert(QByteArray(reinterpret_cast<const char *>(cell.constBits()), int(cell.sizeInBytes())));
    }
    QCOMPARE(cells.size(), 9);

    // No key or Shift alone is no shortcut: Ctrl takes their place.
    options.show();
    QVERIFY(QTest::qWaitForWindowExposed(&options));
    options.hkInMenu()->clear();
    options.hkInMenu()->setFocus();
    QTest::keyClick(options.hkInMenu(), Qt::Key_A);
    QCOMPARE(options.hkInMenu()->keySequence()[0].toCombined(), QKeyCombination(Qt::ControlModifier, Qt::Key_A).toCombined());
    options.hkInMenu()->clear();
    QTest::keyClick(options.hkInMenu(), Qt::Key_B, Qt::ShiftModifier);
    QCOMPARE(options.hkInMenu()->keySequence()[0].toCombined(), QKeyCombination(Qt::ControlModifier, Qt::Key_B).toCombined());
    options.hkInMenu()->clear();
    QTest::keyClick(options.hkInMenu(), Qt::Key_F5, Qt::AltModifier);
    QCOMPARE(options.hkInMenu()->keySequence(), QKeySequence(Qt::ALT | Qt::Key_F5));

    // Enter in the number field moves on instead of closing the form.
    options.pages()->setCurrentIndex(1);
    options.edNLang()->setFocus();
    QVERIFY(options.edNLang()->hasFocus());
    QTest::keyClick(options.edNLang(), Qt::Key_Return);
    QVERIFY(options.isVisible());
    QVERIFY(!options.edNLang()->hasFocus());
    // Digits only, three at most.
    options.edNLang()->selectAll();
    QTest::keyClicks(options.edNLang(), QStringLiteral("12x345"));
    QCOMPARE(options.edNLang()->value(), 123);
    options.reject();
}

void TestExpert::pluginStartsOneExpert()
{
    // As Designer's workbench does once its menus exist.
    m_designer->initializeFormEditorPlugins();
    TVexilExpert *expert = TVexilExpert::instance();
    QVERIFY(expert);
    QCOMPARE(expert->core(), m_designer->core);
    QVERIFY(expert->menuItem());
    QCOMPARE(plain(menuHolding(m_main.get(), expert->menuItem())->title()), QStringLiteral("Settings"));
    // Once per form editor.
    m_designer->initializeFormEditorPlugins();
    QCOMPARE(TVexilExpert::instance(), expert);
    int items = 0;
    for (QAction *action : m_main->menuBar()->actions()) {
        for (QAction *entry : action->menu()->actions())
            items += entry->objectName() == QLatin1String("VexilExpertMenuItem");
    }
    QCOMPARE(items, 1);
}

QTEST_MAIN(TestExpert)
#include "tst_expert.moc"
