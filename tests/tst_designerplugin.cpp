// The Designer plugin inside a real form editor: the components in the
// widget box, the verbs on a form, an applied edit in the saved form and in
// the undo stack, a cancelled one nowhere.
#include "designercore.h"
#include "dialogdriver.h"

#include "vxcomp.h"
#include "vxeditorform.h"
#include "vxgridmodel.h"
#include "vxvexillinked.h"
#include "vxvexiltlv.h"

#include <QtCore/QPluginLoader>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QXmlStreamReader>
#include <QtDesigner/QDesignerComponents>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerFormWindowManagerInterface>
#include <QtDesigner/QDesignerIntegration>
#include <QtDesigner/QDesignerTaskMenuExtension>
#include <QtDesigner/QDesignerWidgetDataBaseInterface>
#include <QtDesigner/QDesignerWidgetFactoryInterface>
#include <QtDesigner/QExtensionManager>
#include <QtDesigner/private/formwindowbase_p.h>
#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>
#include <QtGui/QUndoStack>

#include <memory>

namespace {

const QStringList componentClasses{
    QStringLiteral("TVexil"),           QStringLiteral("TVexilRTSE"), QStringLiteral("TVexilRT"),
    QStringLiteral("TVexilLinked"),     QStringLiteral("TVexilTLV"),  QStringLiteral("TVexilDispatcher"),
    QStringLiteral("TvxLabel"),         QStringLiteral("TvxFormStorage"),
};

const QStringList verbTexts{
    QStringLiteral("Ca&ptions Editor..."),      QStringLiteral("&Hints Editor..."),
    QStringLiteral("&DisplayLabels Editor..."), QStringLiteral("S&trings Editor..."),
    QStringLiteral("Fo&nts Editor..."),         QStringLiteral("M&ultiLines Editor..."),
    QStringLiteral("D&lgsCaptions Editor..."),  QStringLiteral("Other str&ings Editor..."),
    QStringLiteral("System locales Editor..."), QStringLiteral("CharSet Editor..."),
    QStringLiteral("Collections Editor..."),
};
const QString excludeVerb = QStringLiteral("E&xclude components...");

// A plain widget form with a button and a translation component of
// @p vexilClass in two languages.
QString formUi(const QString &vexilClass, const QString &header, const QString &base = QStringLiteral("QWidget"))
{
    return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form</class>
 <widget class="QWidget" name="Form">
  <property name="geometry"><rect><x>0</x><y>0</y><width>300</width><height>200</height></rect></property>
  <property name="windowTitle"><string>Orders</string></property>
  <widget class="QPushButton" name="pushButton">
   <property name="geometry"><rect><x>10</x><y>10</y><width>100</width><height>30</height></rect></property>
   <property name="text"><string>Hello</string></property>
  </widget>
  <widget class="%1" name="Vexil1">
   <property name="geometry"><rect><x>200</x><y>10</y><width>28</width><height>28</height></rect></property>
   <property name="NumOfLanguages"><number>2</number></property>
  </widget>
 </widget>
 <customwidgets>
  <customwidget><class>%1</class><extends>%3</extends><header>%2</header></customwidget>
 </customwidgets>
 <resources/>
 <connections/>
</ui>
)")
        .arg(vexilClass, header, base);
}

// The items of string-list property @p property of widget @p widget in a
// saved form; "notr" is set when the list is marked not to be translated.
struct UiList
{
    bool found = false;
    bool notr = false;
    QStringList items;
};

UiList uiStringList(const QString &ui, const QString &widget, const QString &property)
{
    UiList result;
    QXmlStreamReader xml(ui);
    QStringList widgets;
    bool inProperty = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            if (xml.name() == QLatin1String("widget"))
                widgets << xml.attributes().value(QLatin1String("name")).toString();
            else if (xml.name() == QLatin1String("property") && !widgets.isEmpty() && widgets.last() == widget
                     && xml.attributes().value(QLatin1String("name")) == property)
                inProperty = true;
            else if (inProperty && xml.name() == QLatin1String("stringlist")) {
                result.found = true;
                result.notr = xml.attributes().value(QLatin1String("notr")) == QLatin1String("true");
            } else if (inProperty && xml.name() == QLatin1String("string"))
                result.items << xml.readElementText();
        } else if (xml.isEndElement()) {
            if (xml.name() == QLatin1String("widget"))
                widgets.removeLast();
            else if (xml.name() == QLatin1String("property"))
                inProperty = false;
        }
    }
    return result;
}

QToolButton *tool(QWidget *form, const char *name)
{
    return form->findChild<QToolButton *>(QLatin1String(name));
}

int rowOf(const TvxEditorForm *form, const QString &key)
{
    for (int row = 0; row < form->model()->rowCount(); ++row) {
        if (form->model()->cell(row, 0) == key)
            return row;
    }
    return -1;
}

} // namespace

class TestDesignerPlugin : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void pluginListsTheComponentsInPaletteOrder();
    void componentOnAFormTranslatesThatForm();
    void verbsOfTheTranslationComponents();
    void appliedEditGoesIntoTheSavedFormAndUndo();
    void cancelledEditChangesNothing();
    void secondTranslationComponentGivesAPlaceholder();
    void excludedComponentsGoIntoTheSavedForm();
    void savedFormBuildsIntoAProgramThatSwitches();
    void componentGoneWhileTheEditorIsOpen();

private:
    QDesignerFormWindowInterface *openForm(const QString &ui);
    QDesignerTaskMenuExtension *taskMenu(QWidget *component) const;

    std::unique_ptr<DesignerCore> m_designer;
    QDesignerFormEditorInterface *m_core = nullptr;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestDesignerPlugin::initTestCase()
{
    m_designer = std::make_unique<DesignerCore>();
    m_core = m_designer->core;
    QVERIFY(m_core);
}

void TestDesignerPlugin::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir->path());
}

void TestDesignerPlugin::cleanup()
{
    m_designer->closeForms();
}

void TestDesignerPlugin::cleanupTestCase()
{
    m_designer.reset();
    m_core = nullptr;
}

QDesignerFormWindowInterface *TestDesignerPlugin::openForm(const QString &ui)
{
    m_designer->closeForms();
    return m_designer->openForm(ui);
}

QDesignerTaskMenuExtension *TestDesignerPlugin::taskMenu(QWidget *component) const
{
    return qt_extension<QDesignerTaskMenuExtension *>(m_core->extensionManager(), component);
}

void TestDesignerPlugin::pluginListsTheComponentsInPaletteOrder()
{
    // The module itself, loaded by path as Designer loads it.
    QPluginLoader loader(QStringLiteral(VEXIL_PLUGIN_FILE));
    auto *collection = qobject_cast<QDesignerCustomWidgetCollectionInterface *>(loader.instance());
    QVERIFY2(collection, qPrintable(loader.errorString()));
    QStringList names;
    for (QDesignerCustomWidgetInterface *widget : collection->customWidgets()) {
        names << widget->name();
        QCOMPARE(widget->group(), QStringLiteral("Kestrava"));
        QVERIFY(!widget->isContainer());
        QVERIFY(!widget->icon().isNull());
        QVERIFY(!widget->toolTip().isEmpty());
        QVERIFY(widget->domXml().contains(QLatin1String("class=\"") + widget->name() + QLatin1Char('"')));
    }
    QCOMPARE(names, componentClasses);
    // Each header names the class, so uic's code compiles.
    const QStringList headers{QStringLiteral("vxcomp.h"),      QStringLiteral("vxvexilrtse.h"),
                              QStringLiteral("vxvexilrt.h"),   QStringLiteral("vxvexillinked.h"),
                              QStringLiteral("vxvexiltlv.h"),  QStringLiteral("vxdispatcher.h"),
                              QStringLiteral("vxlabel.h"),     QStringLiteral("vxformstorage.h")};
    for (int i = 0; i < headers.size(); ++i) {
        QFile header(QStringLiteral(VEXIL_RUNTIME_DIR "/") + headers.at(i));
        QVERIFY(header.open(QIODevice::ReadOnly));
        QVERIFY2(header.readAll().contains("class VEXIL_EXPORT " + componentClasses.at(i).toLatin1() + ' '),
                 qPrintable(headers.at(i)));
        QCOMPARE(collection->customWidgets().at(i)->includeFile(), headers.at(i));
    }

    // Designer found the same components, on the same page and in that order.
    QDesignerWidgetDataBaseInterface *db = m_core->widgetDataBase();
    QStringList inDesigner;
    for (int i = 0; i < db->count(); ++i) {
        if (db->item(i)->group() == QLatin1String("Kestrava"))
            inDesigner << db->item(i)->name();
    }
    QCOMPARE(inDesigner, componentClasses);
}

void TestDesignerPlugin::componentOnAFormTranslatesThatForm()
{
    QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
    QVERIFY(form);
    auto *vexil = form->mainContainer()->findChild<TVexil *>(QStringLiteral("Vexil1"));
    QVERIFY(vexil);
    QVERIFY(vexil->isDesigning());
    // The form's top widget is a Qt class inside Designer's window, yet it
    // is the form the component translates.
    QCOMPARE(vexil->owner(), form->mainContainer());
    vexil->BuildList();
    const QStringList keys = [&] {
        QStringList k;
        for (const QString &line : vexil->Captions()->lines())
            k << line.section(QLatin1Char('\t'), 0, 0);
        return k;
    }();
    QVERIFY2(keys.contains(QLatin1String("pushButton")), qPrintable(keys.join(QLatin1Char(','))));
    QVERIFY(keys.contains(QLatin1String("Form")));
    // Visible on the form, so it can be picked.
    QVERIFY(!vexil->testAttribute(Qt::WA_DontShowOnScreen));
}

void TestDesignerPlugin::verbsOfTheTranslationComponents()
{
    {
        QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
        QVERIFY(form);
        QDesignerTaskMenuExtension *menu = taskMenu(form->mainContainer()->findChild<TVexil *>());
        QVERIFY(menu);
        QStringList texts;
        for (QAction *action : menu->taskActions()) {
            texts << action->text();
            QVERIFY(action->isEnabled());
        }
        QCOMPARE(texts, verbTexts + QStringList{excludeVerb});
        QCOMPARE(menu->preferredEditAction(), menu->taskActions().first());
        // Other widgets on the form have no such verbs.
        QDesignerTaskMenuExtension *buttonMenu = taskMenu(form->mainContainer()->findChild<QPushButton *>());
        QVERIFY(!buttonMenu || !buttonMenu->taskActions().contains(menu->taskActions().first()));
        cleanup();
    }
    {
        // The linked component's dialog texts and locales live in its
        // container: those verbs are there but disabled.
        QDesignerFormWindowInterface *form =
            openForm(formUi(QStringLiteral("TVexilLinked"), QStringLiteral("vxvexillinked.h"), QStringLiteral("TVexil")));
        QVERIFY(form);
        QDesignerTaskMenuExtension *menu = taskMenu(form->mainContainer()->findChild<TVexilLinked *>());
        QVERIFY(menu);
        QCOMPARE(menu->taskActions().size(), verbTexts.size() + 1);
        for (int i = 0; i < verbTexts.size(); ++i)
            QCOMPARE(menu->taskActions().at(i)->isEnabled(), i != 6 && i != 8);
        cleanup();
    }
    {
        // The list- and tree-view items get a verb after the common ones.
        QDesignerFormWindowInterface *form =
            openForm(formUi(QStringLiteral("TVexilTLV"), QStringLiteral("vxvexiltlv.h"), QStringLiteral("TVexil")));
        QVERIFY(form);
        QDesignerTaskMenuExtension *menu = taskMenu(form->mainContainer()->findChild<TVexilTLV *>());
        QVERIFY(menu);
        QCOMPARE(menu->taskActions().size(), verbTexts.size() + 2);
        QAction *items = menu->taskActions().at(verbTexts.size());
        QCOMPARE(items->text(), QStringLiteral("ListView_TreeView_&Items Editor..."));
        QCOMPARE(menu->taskActions().last()->text(), excludeVerb);
        QString caption;
        onNextModal([&caption](QWidget *editor) {
            caption = editor->windowTitle();
            QTest::mouseClick(tool(editor, "sbCancel"), Qt::LeftButton);
        });
        items->trigger();
        QCOMPARE(caption, QStringLiteral("TVexil.ListView_TreeView_Items Editor"));
    }
}

void TestDesignerPlugin::appliedEditGoesIntoTheSavedFormAndUndo()
{
    QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
    QVERIFY(form);
    auto *vexil = form->mainContainer()->findChild<TVexil *>();
    auto *button = form->mainContainer()->findChild<QPushButton *>(QStringLiteral("pushButton"));
    QVERIFY(vexil && button);
    const QString before = form->contents();
    QVERIFY(!uiStringList(before, QStringLiteral("Vexil1"), QStringLiteral("Captions")).found);

    // Designer's double click: the first verb, on the captions.
    QString caption;
    bool edited = false;
    onNextModal([&](QWidget *editor) {
        auto *grid = qobject_cast<TvxEditorForm *>(editor);
        caption = editor->windowTitle();
        const int row = rowOf(grid, QStringLiteral("pushButton"));
        edited = row >= 0 && grid->model()->setCell(row, 2, QStringLiteral("Bonjour"));
        QTest::mouseClick(tool(editor, "sbOK"), Qt::LeftButton);
    });
    taskMenu(vexil)->preferredEditAction()->trigger();
    QVERIFY(edited);
    QCOMPARE(caption, QStringLiteral("TVexil.Captions Editor"));
    QVERIFY(form->isDirty());

    const QString applied = QStringLiteral("pushButton\tHello\tBonjour\t");
    QVERIFY(vexil->Captions()->lines().contains(applied));
    const UiList saved = uiStringList(form->contents(), QStringLiteral("Vexil1"), QStringLiteral("Captions"));
    QVERIFY(saved.found);
    QVERIFY2(saved.items.contains(applied), qPrintable(saved.items.join(QLatin1Char('|'))));

    // The language was applied after the edit: language 2 shows the new text.
    vexil->SetActLang(2);
    QCOMPARE(button->text(), QStringLiteral("Bonjour"));
    vexil->SetActLang(1);
    QCOMPARE(button->text(), QStringLiteral("Hello"));

    // Undo gives the old table back, in the component and the form file.
    QUndoStack *history = form->commandHistory();
    QVERIFY(history->canUndo());
    history->undo();
    QVERIFY(!vexil->Captions()->lines().contains(applied));
    QVERIFY(!uiStringList(form->contents(), QStringLiteral("Vexil1"), QStringLiteral("Captions")).items.contains(applied));
    history->redo();
    QVERIFY(vexil->Captions()->lines().contains(applied));

    // The saved form reads back with the table.
    const QString text = form->contents();
    cleanup();
    QDesignerFormWindowInterface *again = openForm(text);
    QVERIFY(again);
    auto *reread = again->mainContainer()->findChild<TVexil *>();
    QVERIFY(reread);
    QVERIFY(reread->Captions()->lines().contains(applied));
}

void TestDesignerPlugin::cancelledEditChangesNothing()
{
    QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
    QVERIFY(form);
    auto *vexil = form->mainContainer()->findChild<TVexil *>();
    const QString before = form->contents();
    const int commands = form->commandHistory()->count();

    // Hints, edited and then cancelled.
    bool edited = false;
    onNextModal([&](QWidget *editor) {
        auto *grid = qobject_cast<TvxEditorForm *>(editor);
        const int row = rowOf(grid, QStringLiteral("pushButton"));
        edited = row >= 0 && grid->model()->setCell(row, 1, QStringLiteral("Press me"));
        QTest::mouseClick(tool(editor, "sbCancel"), Qt::LeftButton);
    });
    taskMenu(vexil)->taskActions().at(1)->trigger();
    QVERIFY(edited);
    QVERIFY(!form->isDirty());
    QCOMPARE(form->commandHistory()->count(), commands);
    QCOMPARE(form->contents(), before);
    for (const QString &line : vexil->Hints()->lines())
        QVERIFY2(!line.contains(QLatin1String("Press me")), qPrintable(line));
    QCOMPARE(vexil->ActiveLanguage(), 1);
}

void TestDesignerPlugin::secondTranslationComponentGivesAPlaceholder()
{
    QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
    QVERIFY(form);
    QString message;
    onNextModal([&message](QWidget *box) {
        if (auto *messageBox = qobject_cast<QMessageBox *>(box))
            message = messageBox->text();
        box->close();
    });
    QWidget *second = m_core->widgetFactory()->createWidget(QStringLiteral("TVexilRT"), form->mainContainer());
    QVERIFY(second);
    QVERIFY(!qobject_cast<TvxCustomLang *>(second));
    QCOMPARE(message, QStringLiteral("Only one TvxCustomLang component per Form/DataModule allowed!"));
    delete second;
    // The first one still translates the form.
    QCOMPARE(TvxCustomLang::componentOf(form->mainContainer()), form->mainContainer()->findChild<TVexil *>());
}

namespace {

QStringList itemTexts(const QListWidget *list)
{
    QStringList texts;
    for (int i = 0; i < list->count(); ++i)
        texts << list->item(i)->text();
    return texts;
}

void doubleClick(QListWidget *list, int row)
{
    list->scrollToItem(list->item(row));
    const QRect rect = list->visualItemRect(list->item(row));
    // A real double click starts with a click, which selects the item.
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, rect.center());
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, rect.center());
}

} // namespace

void TestDesignerPlugin::excludedComponentsGoIntoTheSavedForm()
{
    // A form whose component already leaves the button alone (written in
    // lower case: the list compares names upper-cased).
    QString ui = formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h"));
    ui.replace(QStringLiteral("<number>2</number></property>"),
               QStringLiteral("<number>2</number></property>\n"
                              "   <property name=\"DoNotTranslate\"><stringlist><string>pushButton</string></stringlist></property>"));
    ui.replace(QStringLiteral("  <widget class=\"%1\" name=\"Vexil1\">").arg(QStringLiteral("TVexil")),
               QStringLiteral("  <widget class=\"QLineEdit\" name=\"lineEdit\"/>\n"
                              "  <widget class=\"QLabel\" name=\"label\"/>\n"
                              "  <widget class=\"TVexil\" name=\"Vexil1\">"));
    QDesignerFormWindowInterface *form = openForm(ui);
    QVERIFY(form);
    auto *vexil = form->mainContainer()->findChild<TVexil *>();
    QVERIFY(vexil);
    QCOMPARE(vexil->DoNotTranslate()->lines(), QStringList{QStringLiteral("PUSHBUTTON")});
    const int commands = form->commandHistory()->count();

    // Cancel after moving everything changes nothing.
    QStringList left, right;
    onNextModal([&](QWidget *dialog) {
        auto *comps = dialog->findChild<QListWidget *>(QStringLiteral("lbComps"));
        auto *selected = dialog->findChild<QListWidget *>(QStringLiteral("lbSelected"));
        left = itemTexts(comps);
        right = itemTexts(selected);
        QTest::mouseClick(dialog->findChild<QToolButton *>(QStringLiteral("sbAddAll")), Qt::LeftButton);
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("btCancel")), Qt::LeftButton);
    });
    taskMenu(vexil)->taskActions().last()->trigger();
    QCOMPARE(right, QStringList{QStringLiteral("PUSHBUTTON")});
    QVERIFY2(left.contains(QLatin1String("LINEEDIT")) && left.contains(QLatin1String("LABEL")),
             qPrintable(left.join(QLatin1Char(','))));
    QVERIFY(!left.contains(QLatin1String("PUSHBUTTON")));
    QVERIFY(!left.contains(QLatin1String("VEXIL1")));
    QCOMPARE(form->commandHistory()->count(), commands);
    QCOMPARE(vexil->DoNotTranslate()->lines(), QStringList{QStringLiteral("PUSHBUTTON")});

    // ">" moves the selection to the end of the right list, a double click
    // on the right moves an item back; OK writes the list into the form.
    onNextModal([&](QWidget *dialog) {
        auto *comps = dialog->findChild<QListWidget *>(QStringLiteral("lbComps"));
        auto *selected = dialog->findChild<QListWidget *>(QStringLiteral("lbSelected"));
        comps->clearSelection();
        comps->findItems(QStringLiteral("LABEL"), Qt::MatchExactly).first()->setSelected(true);
        QTest::mouseClick(dialog->findChild<QToolButton *>(QStringLiteral("sbAdd")), Qt::LeftButton);
        doubleClick(selected, 0);
        left = itemTexts(comps);
        right = itemTexts(selected);
        QTest::mouseClick(dialog->findChild<QPushButton *>(QStringLiteral("btOK")), Qt::LeftButton);
    });
    taskMenu(vexil)->taskActions().last()->trigger();
    QCOMPARE(right, QStringList{QStringLiteral("LABEL")});
    QCOMPARE(left.last(), QStringLiteral("PUSHBUTTON"));
    QCOMPARE(vexil->DoNotTranslate()->lines(), QStringList{QStringLiteral("LABEL")});
    QVERIFY(form->isDirty());
    const UiList saved = uiStringList(form->contents(), QStringLiteral("Vexil1"), QStringLiteral("DoNotTranslate"));
    QCOMPARE(saved.items, QStringList{QStringLiteral("LABEL")});

    // Designer's undo gives the old list back.
    form->commandHistory()->undo();
    QCOMPARE(vexil->DoNotTranslate()->lines(), QStringList{QStringLiteral("PUSHBUTTON")});
}

void TestDesignerPlugin::savedFormBuildsIntoAProgramThatSwitches()
{
    // A caption translated in Designer, the form saved as Designer saves it.
    QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
    QVERIFY(form);
    auto *vexil = form->mainContainer()->findChild<TVexil *>();
    QVERIFY(vexil);
    onNextModal([](QWidget *editor) {
        auto *grid = qobject_cast<TvxEditorForm *>(editor);
        grid->model()->setCell(rowOf(grid, QStringLiteral("pushButton")), 2, QStringLiteral("Grüß dich"));
        QTest::mouseClick(tool(editor, "sbOK"), Qt::LeftButton);
    });
    taskMenu(vexil)->preferredEditAction()->trigger();
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    {
        QFile ui(dir.filePath(QStringLiteral("form.ui")));
        QVERIFY(ui.open(QIODevice::WriteOnly));
        ui.write(form->contents().toUtf8());
    }

    // uic, then the compiler and linker, as a user's build runs them.
    QProcess uic;
    uic.start(QStringLiteral(VEXIL_UIC), {dir.filePath(QStringLiteral("form.ui")), QStringLiteral("-o"),
                                          dir.filePath(QStringLiteral("ui_form.h"))});
    QVERIFY(uic.waitForFinished(60000));
    QVERIFY2(uic.exitCode() == 0, uic.readAllStandardError().constData());
    {
        QFile main(dir.filePath(QStringLiteral("main.cpp")));
        QVERIFY(main.open(QIODevice::WriteOnly));
        main.write(R"(#include "ui_form.h"
#include <QtWidgets/QApplication>
#include <cstdio>
int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QWidget window;
    Ui::Form ui;
    ui.setupUi(&window);
    window.show();
    std::printf("%s\n", qPrintable(ui.pushButton->text()));
    ui.Vexil1->SetActLang(2);
    std::printf("%s\n", qPrintable(ui.pushButton->text()));
    ui.Vexil1->SetActLang(1);
    std::printf("%s\n", qPrintable(ui.pushButton->text()));
    return 0;
}
)");
    }
    QProcess cc;
    cc.setWorkingDirectory(dir.path());
    cc.start(QStringLiteral(VEXIL_CXX), {QStringLiteral("main.cpp"), QStringLiteral("-o"), QStringLiteral("form"),
                                         QLatin1Char('@') + QStringLiteral(VEXIL_BUILD_ARGS)});
    QVERIFY(cc.waitForFinished(300000));
    QVERIFY2(cc.exitCode() == 0, cc.readAllStandardError().constData());

    QProcess program;
    program.start(dir.filePath(QStringLiteral("form")), {});
    QVERIFY(program.waitForFinished(60000));
    QVERIFY2(program.exitCode() == 0, program.readAllStandardError().constData());
    const QStringList lines = QString::fromUtf8(program.readAllStandardOutput()).split(QLatin1Char('\n'));
    QCOMPARE(lines.mid(0, 3), (QStringList{QStringLiteral("Hello"), QStringLiteral("Grüß dich"), QStringLiteral("Hello")}));
}

void TestDesignerPlugin::componentGoneWhileTheEditorIsOpen()
{
    // Deleted in Designer (kept aside for undo): the applied table still
    // goes in as one command, and undoing the deletion brings it back.
    {
        QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
        QVERIFY(form);
        QPointer<TVexil> vexil = form->mainContainer()->findChild<TVexil *>();
        auto *formBase = qobject_cast<qdesigner_internal::FormWindowBase *>(form);
        QVERIFY(formBase);
        onNextModal([&](QWidget *editor) {
            formBase->deleteWidgetList({vexil.data()});
            QTest::mouseClick(tool(editor, "sbOK"), Qt::LeftButton);
        });
        taskMenu(vexil)->preferredEditAction()->trigger();
        QVERIFY(!form->contents().contains(QLatin1String("Vexil1")));
        form->commandHistory()->undo(); // the table
        form->commandHistory()->undo(); // the deletion
        QVERIFY(form->contents().contains(QLatin1String("Vexil1")));
        cleanup();
    }
    // Destroyed outright: nothing is written and nothing crashes.
    {
        QDesignerFormWindowInterface *form = openForm(formUi(QStringLiteral("TVexil"), QStringLiteral("vxcomp.h")));
        QVERIFY(form);
        QPointer<TVexil> vexil = form->mainContainer()->findChild<TVexil *>();
        QDesignerTaskMenuExtension *menu = taskMenu(vexil);
        const int commands = form->commandHistory()->count();
        onNextModal([&](QWidget *editor) {
            auto *grid = qobject_cast<TvxEditorForm *>(editor);
            grid->model()->setCell(rowOf(grid, QStringLiteral("pushButton")), 2, QStringLiteral("Hallo"));
            delete vexil.data();
            QTest::mouseClick(tool(editor, "sbOK"), Qt::LeftButton);
        });
        menu->preferredEditAction()->trigger();
        QVERIFY(!vexil);
        QCOMPARE(form->commandHistory()->count(), commands);
    }
}

QTEST_MAIN(TestDesignerPlugin)
#include "tst_designerplugin.moc"
