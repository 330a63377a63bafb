// Property discovery on real Qt forms: which lines the tables gain, keep,
// recover after a rename and lose.
#include "tablekeys.h"
#include "vxcomp.h"
#include "vxformstorage.h"

#include <QtTest>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialog>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBox>
#include <QtWidgets/QTreeWidget>

class TForm1 : public QWidget
{
    Q_OBJECT
public:
    TForm1()
    {
        setWindowTitle(QStringLiteral("Form1"));
        button = new QPushButton(QStringLiteral("OK"), this);
        button->setObjectName(QStringLiteral("Button1"));
        button->setToolTip(QStringLiteral("Accept"));
        vx = new TVexil(this);
        vx->Loaded();
    }
    QPushButton *button;
    TVexil *vx;
};

// A class of the application's own with string lists named like the item
// lists of Qt's widgets: ordinary properties all the same.
class TagEditor : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QStringList items READ items WRITE setItems)
    Q_PROPERTY(QStringList lines READ lines WRITE setLines)
public:
    using QWidget::QWidget;
    QStringList items() const { return m_items; }
    void setItems(const QStringList &l) { m_items = l; }
    QStringList lines() const { return m_lines; }
    void setLines(const QStringList &l) { m_lines = l; }

private:
    QStringList m_items, m_lines;
};

class TstDiscovery : public QObject
{
    Q_OBJECT
private slots:
    void onlyDesignedObjectsGetLines();
    void separatorTurnedIntoItemGetsCaption();
    void itemsAndLinesOfOtherClasses();
    void newFormLines();
    void formLineStaysFirst();
    void renameKeepsTranslations();
    void separatorsAndDoNotTranslateGetNoLines();
    void designTimeCopiesIntoActiveLanguage();
    void deletedComponentsLoseTheirLines();
    void qtCategories();
    void staleCollectionAndPropertyLinesGo();
    void otherWindowsAreNotScanned();
};

void TstDiscovery::onlyDesignedObjectsGetLines()
{
    // A main window with the widgets whose insides Qt builds itself.
    QMainWindow window;
    window.setObjectName(QStringLiteral("MainWindow"));
    auto *central = new QWidget(&window);
    central->setObjectName(QStringLiteral("centralwidget"));
    window.setCentralWidget(central);
    for (const char *name : {"tabsA", "tabsB"}) {
        auto *tabs = new QTabWidget(central);
        tabs->setObjectName(QLatin1String(name));
        for (int i = 0; i < 3; ++i) {
            auto *page = new QWidget;
            page->setObjectName(QLatin1String(name) + QString::number(i));
            tabs->addTab(page, QStringLiteral("Page %1").arg(i));
        }
    }
    auto *edit = new QLineEdit(QStringLiteral("typed by the user"), central);
    edit->setObjectName(QStringLiteral("edName"));
    edit->setClearButtonEnabled(true);
    edit->setPlaceholderText(QStringLiteral("Your name"));
    auto *storage = new TvxFormStorage(&window);
    storage->setObjectName(QStringLiteral("FormStorage1"));
    auto *dispatcher = new TVexilDispatcher(&window);
    dispatcher->setObjectName(QStringLiteral("Dispatcher1"));
    auto *vx = new TVexil(central);
    vx->Loaded();
    vx->BuildList();

    QStringList all;
    for (TStringsType t : {stCaptions, stHints, stFonts, stCharSets, stMultiLines, stOtherStrings, stCollections}) {
        const QStringList k = keys(vx->GetPropListByType(t));
        QCOMPARE(QSet<QString>(k.begin(), k.end()).size(), k.size()); // no name twice
        all += k;
    }
    const QString joined = all.join(QLatin1Char(' '));
    for (const char *inner : {"ScrollLeftButton", "ScrollRightButton", "_q_qlineeditclearaction", "_layout",
                              "FormStorage1", "Dispatcher1", "qt_"})
        QVERIFY2(!joined.contains(QLatin1String(inner)), inner);
    QVERIFY(!keys(vx->Captions()).contains(QStringLiteral("edName"))); // the user's text is no caption
    QVERIFY(all.contains(QStringLiteral("edName.placeholderText")));
    QVERIFY(all.contains(QStringLiteral("tabsB.Tabs[2].Text")));
    QVERIFY(all.contains(QStringLiteral("tabsA1"))); // the pages themselves are the form's
}

void TstDiscovery::separatorTurnedIntoItemGetsCaption()
{
    TForm1 form;
    auto *menu = new QMenu(QStringLiteral("&Edit"), &form);
    menu->setObjectName(QStringLiteral("menuEdit"));
    QAction *action = menu->addSeparator();
    action->setObjectName(QStringLiteral("N1"));
    form.vx->BuildList();
    QVERIFY(!keys(form.vx->Captions()).contains(QStringLiteral("N1")));
    action->setSeparator(false);
    action->setText(QStringLiteral("&Paste"));
    form.vx->BuildList();
    QVERIFY(form.vx->Captions()->lines().contains(QStringLiteral("N1\t&Paste\t")));
}

void TstDiscovery::itemsAndLinesOfOtherClasses()
{
    TForm1 form;
    auto *tags = new TagEditor(&form);
    tags->setObjectName(QStringLiteral("tags"));
    tags->setItems({QStringLiteral("red"), QStringLiteral("green")});
    tags->setLines({QStringLiteral("one")});
    form.vx->SetNumLang(2);
    form.vx->BuildList();
    QVERIFY(form.vx->MultiLines()->lines().contains(QStringLiteral("tags.items\tred,green\t\t")));
    QVERIFY(form.vx->MultiLines()->lines().contains(QStringLiteral("tags.lines\tone\t\t")));
    form.vx->ReplaceStringValue(form.vx->MultiLines(), QStringLiteral("tags.items"), QStringLiteral("rot,grün"), 2);
    form.vx->ReplaceStringValue(form.vx->MultiLines(), QStringLiteral("tags.lines"), QStringLiteral("eins,zwei"), 2);
    form.vx->SetActLang(2);
    QCOMPARE(tags->items(), (QStringList{QStringLiteral("rot"), QStringLiteral("grün")}));
    QCOMPARE(tags->lines(), (QStringList{QStringLiteral("eins"), QStringLiteral("zwei")}));
}

void TstDiscovery::newFormLines()
{
    TForm1 form;
    form.vx->BuildList();
    QCOMPARE(form.vx->Captions()->lines(),
             (QStringList{QStringLiteral("TForm1\tForm1\t"), QStringLiteral("Button1\tOK\t")}));
    QCOMPARE(form.vx->Hints()->at(1), QStringLiteral("Button1\tAccept\t"));
    QCOMPARE(keys(form.vx->Fonts()), (QStringList{QStringLiteral("TForm1"), QStringLiteral("Button1")}));
    QCOMPARE(form.vx->CharSets()->at(1), QStringLiteral("Button1\tDEFAULT_CHARSET\t"));
    QVERIFY(keys(form.vx->OtherStrings()).contains(QStringLiteral("Button1.statusTip")));
    QVERIFY(keys(form.vx->OtherStrings()).contains(QStringLiteral("TForm1.statusTip")));
    QVERIFY(!keys(form.vx->OtherStrings()).contains(QStringLiteral("Button1.objectName")));
    QVERIFY(!keys(form.vx->OtherStrings()).contains(QStringLiteral("Button1.styleSheet")));
    QVERIFY(!keys(form.vx->OtherStrings()).contains(QStringLiteral("Button1.text")));

    form.vx->SetNumLang(3);
    auto *label = new QLabel(QStringLiteral("Name"), &form);
    label->setObjectName(QStringLiteral("Label1"));
    form.vx->BuildList();
    QCOMPARE(form.vx->Captions()->at(2), QStringLiteral("Label1\tName\t\t\t"));
    QCOMPARE(form.vx->Captions()->count(), 3); // nothing duplicated by a second build
}

void TstDiscovery::formLineStaysFirst()
{
    TForm1 form;
    form.vx->setCaptions({QStringLiteral("Button1\tOK\t")});
    form.vx->BuildList();
    QCOMPARE(keys(form.vx->Captions()), (QStringList{QStringLiteral("TForm1"), QStringLiteral("Button1")}));
}

void TstDiscovery::renameKeepsTranslations()
{
    TForm1 form;
    TVexil *vx = form.vx;
    vx->SetNumLang(2);
    vx->BuildList();
    vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Jawohl"), 2);
    vx->ReplaceStringValue(vx->Hints(), QStringLiteral("Button1"), QStringLiteral("Annehmen"), 2);
    vx->ReplaceStringValue(vx->CharSets(), QStringLiteral("Button1"), QStringLiteral("RUSSIAN_CHARSET"), 2);
    // A second button with the same caption must not take the renamed one's texts.
    auto *other = new QPushButton(QStringLiteral("OK"), &form);
    other->setObjectName(QStringLiteral("Button2"));
    vx->BuildList();
    QCOMPARE(vx->Captions()->at(2), QStringLiteral("Button2\tOK\t\t"));

    form.button->setObjectName(QStringLiteral("btnOK"));
    vx->BuildList();
    QVERIFY(!keys(vx->Captions()).contains(QStringLiteral("Button1")));
    QVERIFY(vx->Captions()->lines().contains(QStringLiteral("btnOK\tOK\tJawohl\t")));
    QVERIFY(vx->Hints()->lines().contains(QStringLiteral("btnOK\tAccept\tAnnehmen\t")));
    QVERIFY(vx->CharSets()->lines().contains(QStringLiteral("btnOK\tDEFAULT_CHARSET\tRUSSIAN_CHARSET\t")));
    QVERIFY(!keys(vx->CharSets()).contains(QStringLiteral("Button1")));
    QVERIFY(keys(vx->OtherStrings()).contains(QStringLiteral("btnOK.statusTip")));
    QVERIFY(!keys(vx->OtherStrings()).contains(QStringLiteral("Button1.statusTip")));
}

void TstDiscovery::separatorsAndDoNotTranslateGetNoLines()
{
    TForm1 form;
    auto *menu = new QMenu(QStringLiteral("&File"), &form);
    menu->setObjectName(QStringLiteral("menuFile"));
    auto *open = menu->addAction(QStringLiteral("&Open"));
    open->setObjectName(QStringLiteral("actionOpen"));
    QAction *separator = menu->addSeparator();
    separator->setObjectName(QStringLiteral("N1"));
    auto *dash = new QAction(QStringLiteral("-"), &form);
    dash->setObjectName(QStringLiteral("N2"));
    auto *secret = new QLabel(QStringLiteral("Logo"), &form);
    secret->setObjectName(QStringLiteral("lblLogo"));
    form.vx->SetDoNotList({QStringLiteral("lbllogo")});

    form.vx->BuildList();
    const QStringList captions = keys(form.vx->Captions());
    QVERIFY(captions.contains(QStringLiteral("menuFile")));
    QVERIFY(captions.contains(QStringLiteral("actionOpen")));
    QVERIFY(!captions.contains(QStringLiteral("N1")));
    QVERIFY(!captions.contains(QStringLiteral("N2")));
    for (TStringsType t : {stCaptions, stHints, stFonts, stOtherStrings})
        QVERIFY(!keys(form.vx->GetPropListByType(t)).join(QLatin1Char(' ')).contains(QStringLiteral("lblLogo")));
}

void TstDiscovery::designTimeCopiesIntoActiveLanguage()
{
    TForm1 form;
    TVexil *vx = form.vx;
    vx->setDesigning(true);
    vx->SetNumLang(2);
    auto *other = new QPushButton(QStringLiteral("Cancel"), &form);
    other->setObjectName(QStringLiteral("Button2"));
    vx->BuildList();
    vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Gut"), 2);
    vx->SetActLang(2);
    QCOMPARE(form.button->text(), QStringLiteral("Gut"));

    form.button->setText(QStringLiteral("Sehr gut"));
    other->setText(QStringLiteral("Abbrechen"));
    vx->BuildList();
    QCOMPARE(vx->Captions()->at(1), QStringLiteral("Button1\tOK\tSehr gut\t"));
    QCOMPARE(vx->Captions()->at(2), QStringLiteral("Button2\tCancel\t\t")); // untranslated stays empty

    vx->setDesigning(false); // at run time the tables are not touched
    form.button->setText(QStringLiteral("Changed"));
    vx->BuildList();
    QCOMPARE(vx->Captions()->at(1), QStringLiteral("Button1\tOK\tSehr gut\t"));
}

void TstDiscovery::deletedComponentsLoseTheirLines()
{
    TForm1 form;
    TVexil *vx = form.vx;
    auto *box = new QComboBox(&form);
    box->setObjectName(QStringLiteral("cbColour"));
    box->addItems({QStringLiteral("Red"), QStringLiteral("Green")});
    vx->AddString(QStringLiteral("cbColour"), {QStringLiteral("kept")});
    vx->BuildList();
    QVERIFY(keys(vx->MultiLines()).contains(QStringLiteral("cbColour.Items")));
    const int dialogs = vx->DlgsCaptions()->count();
    const QStringList locales = vx->Locales()->lines();

    delete box;
    vx->BuildList();
    for (TStringsType t : {stCaptions, stHints, stFonts, stCharSets, stMultiLines, stOtherStrings})
        QVERIFY(!keys(vx->GetPropListByType(t)).join(QLatin1Char(' ')).contains(QStringLiteral("cbColour")));
    QCOMPARE(vx->Strings()->lines(), QStringList{QStringLiteral("cbColour\tkept\t")});
    QCOMPARE(vx->DlgsCaptions()->count(), dialogs);
    QCOMPARE(vx->Locales()->lines(), locales);
}

void TstDiscovery::qtCategories()
{
    QWidget form;
    form.setObjectName(QStringLiteral("Form"));
    auto *group = new QGroupBox(QStringLiteral("Options"), &form);
    group->setObjectName(QStringLiteral("gbOptions"));
    auto *edit = new QLineEdit(group);
    edit->setObjectName(QStringLiteral("edName"));
    edit->setPlaceholderText(QStringLiteral("Your name"));
    auto *list = new QListWidget(&form);
    list->setObjectName(QStringLiteral("lbFruit"));
    list->addItems({QStringLiteral("Apple pie"), QStringLiteral("Pear")});
    auto *memo = new QPlainTextEdit(QStringLiteral("one\ntwo"), &form);
    memo->setObjectName(QStringLiteral("Memo1"));
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tvFiles"));
    tree->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Size")});
    auto *tabs = new QTabWidget(&form);
    tabs->setObjectName(QStringLiteral("tabs"));
    tabs->addTab(new QWidget, QStringLiteral("General"));
    tabs->setTabToolTip(0, QStringLiteral("General settings"));
    auto *toolBox = new QToolBox(&form);
    toolBox->setObjectName(QStringLiteral("toolBox"));
    toolBox->addItem(new QWidget, QStringLiteral("Page A"));
    TVexil vx(&form);
    vx.Loaded();
    vx.BuildList();

    QVERIFY(vx.Captions()->lines().contains(QStringLiteral("gbOptions\tOptions\t")));
    QVERIFY(vx.OtherStrings()->lines().contains(QStringLiteral("edName.placeholderText\tYour name\t")));
    QVERIFY(vx.MultiLines()->lines().contains(QStringLiteral("lbFruit.Items\t\"Apple pie\",Pear\t")));
    QVERIFY(vx.MultiLines()->lines().contains(QStringLiteral("Memo1.Lines\tone,two\t")));
    QVERIFY(vx.Collections()->lines().contains(QStringLiteral("tvFiles.Columns[1].Caption\tSize\t")));
    QVERIFY(vx.Collections()->lines().contains(QStringLiteral("tabs.Tabs[0].Text\tGeneral\t")));
    QVERIFY(vx.Collections()->lines().contains(QStringLiteral("tabs.Tabs[0].Hint\tGeneral settings\t")));
    QVERIFY(vx.Collections()->lines().contains(QStringLiteral("toolBox.Pages[0].Text\tPage A\t")));
    // Qt's own inner widgets are not the form's components.
    QVERIFY(!vx.Captions()->text().contains(QStringLiteral("qt_")));
    QVERIFY(!vx.OtherStrings()->text().contains(QStringLiteral("qt_")));
}

void TstDiscovery::staleCollectionAndPropertyLinesGo()
{
    TForm1 form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tree"));
    tree->setHeaderLabels({QStringLiteral("A"), QStringLiteral("B")});
    TVexil *vx = form.vx;
    vx->BuildList();
    vx->OtherStrings()->append(QStringLiteral("Button1.noSuchProperty\tx\t"));
    vx->Captions()->append(QStringLiteral("tree\tx\t")); // a tree has no caption property
    tree->setColumnCount(1);
    vx->BuildList();
    QVERIFY(vx->Collections()->lines().contains(QStringLiteral("tree.Columns[0].Caption\tA\t")));
    QVERIFY(!keys(vx->Collections()).contains(QStringLiteral("tree.Columns[1].Caption")));
    QVERIFY(!keys(vx->OtherStrings()).contains(QStringLiteral("Button1.noSuchProperty")));
    QVERIFY(!keys(vx->Captions()).contains(QStringLiteral("tree")));
}

void TstDiscovery::otherWindowsAreNotScanned()
{
    TForm1 form;
    auto *dialog = new QDialog(&form);
    dialog->setObjectName(QStringLiteral("dlgAbout"));
    auto *inner = new QPushButton(QStringLiteral("Close"), dialog);
    inner->setObjectName(QStringLiteral("btnClose"));
    form.vx->BuildList();
    QVERIFY(!keys(form.vx->Captions()).contains(QStringLiteral("btnClose")));
}

QTEST_MAIN(TstDiscovery)
#include "tst_discovery.moc"
