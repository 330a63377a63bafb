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
#include <QtGui/QAction>
#include <QtTest/QtTest>
#include <QtWidgets/QLabel>
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
        QCOMPARE(texts, verbTexts);
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
        QCOMPARE(menu->taskActions().size(), verbTexts.size());
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
        QCOMPARE(menu->taskActions().size(), verbTexts.size() + 1);
        QCOMPARE(menu->taskActions().last()->text(), QStringLiteral("ListView_TreeView_&Items Editor..."));
        QString caption;
        onNextModal([&caption](QWidget *editor) {
            caption = editor->windowTitle();
            QTest::mouseClick(tool(editor, "sbCancel"), Qt::LeftButton);
        });
        menu->taskActions().last()->trigger();
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

QTEST_MAIN(TestDesignerPlugin)
#include "tst_designerplugin.moc"
