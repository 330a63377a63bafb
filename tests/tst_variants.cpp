// The run-time variants of the translation component: storage file and
// run-time editor, the external editor's hand-over, the shared container of
// dialog texts, and list and tree items.
#include "editorforms.h"
#include "vxerrors.h"
#include "vxgridmodel.h"
#include "vxrteditor.h"
#include "vxvexillinked.h"
#include "vxvexilrt.h"
#include "vxvexilrtse.h"
#include "vxvexiltlv.h"

#include "ui_variantsform.h"

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include <memory>

namespace {

void write(const QString &file, const QByteArray &bytes)
{
    QFile f(file);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// Form code uic generates for all four components compiles (it calls the
// setters by their Qt-style names). A form holds one translation component,
// so this one is built only to be compiled.
[[maybe_unused]] void setUpAllFour(QWidget *form)
{
    Ui::VariantsForm ui;
    ui.setupUi(form);
}

} // namespace

class TestVariants : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void storageFileAndRuntimeEditor();
    void externalEditorMissing();
    void sharedContainer();
    void treeAndTableItems();
    void itemTableInFiles();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestVariants::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
}

void TestVariants::storageFileAndRuntimeEditor()
{
    const QString storage = m_dir->filePath(QStringLiteral("orders.lng"));
    {
        // A missing or damaged storage file leaves the designed texts.
        for (const QByteArray &bytes : {QByteArray(), QByteArray("\xff\xfe garbage \x00\x01 [[[", 18)}) {
            if (!bytes.isNull())
                write(storage, bytes);
            TOrders form;
            auto *vx = new TVexilRT(&form);
            vx->setNumOfLanguages(2);
            vx->setCaptions({QStringLiteral("btnSend\tSend\tSenden\t")});
            vx->setLoadOnCreate(true);
            vx->setStorageFile(storage);
            vx->Loaded();
            QCOMPARE(vx->Captions()->lines(), QStringList({QStringLiteral("btnSend\tSend\tSenden\t")}));
        }
        QFile::remove(storage);
    }

    TOrders form;
    auto *vx = new TVexilRT(&form);
    vx->SetNumLang(2);
    vx->setStorageFile(storage);
    QCOMPARE(vx->StorageDelimiter(), QLatin1Char('`'));
    vx->SetActLang(2);

    // Cancel: nothing saved.
    onNextModal([](QWidget *editor) {
        QTest::mouseClick(editor->findChild<QToolButton *>(QStringLiteral("sbCancel")), Qt::LeftButton);
    });
    QVERIFY(!vx->EditProperty(stCaptions));
    QVERIFY(!QFile::exists(storage));

    // Apply saves every table with the backquote between the texts.
    onNextModal([](QWidget *editor) {
        auto *rt = qobject_cast<TfrmRTEditor *>(editor);
        rt->model()->setCell(rt->model()->findKey(QStringLiteral("btnSend")), 2, QStringLiteral("Senden"));
        QTest::mouseClick(rt->findChild<QToolButton *>(QStringLiteral("sbOK")), Qt::LeftButton);
    });
    QVERIFY(vx->EditProperty(stCaptions));
    QCOMPARE(form.button->text(), QStringLiteral("Senden"));
    QVERIFY(contents(storage).contains("Orders.btnSend=Send`Senden`"));

    // A new form loads the storage file once built.
    TOrders again;
    auto *next = new TVexilRT(&again);
    next->setNumOfLanguages(2);
    next->setActiveLanguage(2);
    next->setLoadOnCreate(true);
    next->setStorageFile(storage);
    next->Loaded();
    QCOMPARE(again.button->text(), QStringLiteral("Senden"));
}

void TestVariants::externalEditorMissing()
{
    TOrders form;
    auto *vx = new TVexilRTSE(&form);
    vx->SetVXLEditor(QStringLiteral("Other.Editor"));
    QCOMPARE(vx->VXLEditor(), QStringLiteral("VXLEditor.VxlEditorIntf"));
    QCOMPARE(vx->property("VXLEditor").toString(), QStringLiteral("VXLEditor.VxlEditorIntf"));

    qputenv("VEXIL_EDITOR_SERVICE", "org.vexil.test.noeditor");
    form.show();
    bool disabled = false;
    QObject watcher;
    form.installEventFilter(&watcher);
    connect(qApp, &QApplication::focusChanged, &watcher, [&] { disabled = disabled || !form.isEnabled(); });
    QVERIFY_THROWS_EXCEPTION(EVexilError, vx->EditStrings(QString(), QLatin1Char('|')));
    QVERIFY(form.isEnabled());
    QVERIFY(!disabled);
    qunsetenv("VEXIL_EDITOR_SERVICE");

    // Disabling and enabling again touches only the windows it disabled.
    QWidget alreadyOff;
    alreadyOff.setEnabled(false);
    alreadyOff.show();
    vx->ChangeEnable(false);
    QVERIFY(!form.isEnabled());
    vx->ChangeEnable(true);
    QVERIFY(form.isEnabled());
    QVERIFY(!alreadyOff.isEnabled());
}

void TestVariants::sharedContainer()
{
    TOrders shared;
    auto *container = new TVexil(&shared);
    container->SetNumLang(2);
    container->DlgsCaptions()->setLines({QStringLiteral("Yes\tYes\tJa\t")});
    container->Locales()->setLines({QStringLiteral("DecimalSeparator\t.\t,\t")});

    TOrders form;
    auto *linked = new TVexilLinked(&form);
    linked->SetNumLang(2);
    QVERIFY(!linked->GetPropListByType(stDlgsCaptions));
    QVERIFY(!linked->GetPropListByType(stLocales));
    QVERIFY(linked->GetPropListByType(stCaptions));
    linked->SetCommonContainer(container);
    QCOMPARE(linked->DlgsCaptions()->lines(), container->DlgsCaptions()->lines());
    QCOMPARE(linked->Locales()->lines(), container->Locales()->lines());
    // A copy: later changes of the container are not followed.
    container->DlgsCaptions()->setLines({QStringLiteral("Yes\tYes\tJawohl\t")});
    QCOMPARE(linked->DlgsCaptions()->at(0), QStringLiteral("Yes\tYes\tJa\t"));
    linked->SetCommonContainer(linked); // itself: ignored
    QCOMPARE(linked->CommonContainer(), container);

    // Dialog texts are the container's business: files do not carry them.
    const QString file = m_dir->filePath(QStringLiteral("linked.lng"));
    linked->SaveAllToFile(file, QLatin1Char('|'));
    QVERIFY(!contents(file).contains("[Dialogs]"));

    // Named in a form file, the container is found when loading ends.
    TOrders named;
    container->setObjectName(QStringLiteral("CommonTexts"));
    auto *fromForm = new TVexilLinked(&named);
    fromForm->setCommonContainerName(QStringLiteral("CommonTexts"));
    fromForm->Loaded();
    QCOMPARE(fromForm->CommonContainer(), container);
    QCOMPARE(fromForm->DlgsCaptions()->at(0), QStringLiteral("Yes\tYes\tJawohl\t"));

    // In the designer the two tables stay empty.
    TOrders designed;
    auto *design = new TVexilLinked(&designed);
    design->setDesigning(true);
    design->setCommonContainerName(QStringLiteral("CommonTexts"));
    design->Loaded();
    QVERIFY(design->DlgsCaptions()->isEmpty());
    QVERIFY(design->Locales()->isEmpty());
}

void TestVariants::treeAndTableItems()
{
    TOrders form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tvGoods"));
    auto *fruit = new QTreeWidgetItem(tree, {QStringLiteral("Fruit")});
    new QTreeWidgetItem(fruit, {QStringLiteral("Apple")});
    new QTreeWidgetItem(tree, {QStringLiteral("Bread")});
    auto *table = new QTableWidget(2, 2, &form);
    table->setObjectName(QStringLiteral("lvPeople"));
    table->setItem(0, 0, new QTableWidgetItem(QStringLiteral("Buyer")));
    table->setItem(0, 1, new QTableWidgetItem(QStringLiteral("Anna")));
    table->setItem(1, 0, new QTableWidgetItem(QStringLiteral("Seller")));

    auto *vx = new TVexilTLV(&form);
    vx->SetNumLang(2);
    vx->BuildList();
    const QStringList lines = vx->ListView_TreeView_Items()->lines();
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.at(0), QStringLiteral("tvGoods.Items[0].Text\tFruit\t\t\t"));
    QCOMPARE(lines.at(1), QStringLiteral("tvGoods.Items[1].Text\tApple\t\t\t")); // pre-order
    QCOMPARE(lines.at(3), QStringLiteral("lvPeople.Items[0].Caption\tBuyer\t\t\t"));
    QVERIFY(vx->IsCompIncluded(QStringLiteral("tvGoods.Items[2]")));
    QVERIFY(vx->IsCompIncluded(QStringLiteral("tvGoods")));
    QVERIFY(!vx->IsCompIncluded(QStringLiteral("tvGoods.Items[3]")));

    // Translate and switch: items follow, other columns do not.
    QStringList german = lines;
    german[0] = QStringLiteral("tvGoods.Items[0].Text\tFruit\tObst\t");
    german[1] = QStringLiteral("tvGoods.Items[1].Text\tApple\tApfel\t");
    german[2] = QStringLiteral("tvGoods.Items[2].Text\tBread\tBrot\t");
    german[3] = QStringLiteral("lvPeople.Items[0].Caption\tBuyer\tKäufer\t");
    vx->ListView_TreeView_Items()->setLines(german);
    vx->SetActLang(2);
    QCOMPARE(fruit->text(0), QStringLiteral("Obst"));
    QCOMPARE(fruit->child(0)->text(0), QStringLiteral("Apfel"));
    QCOMPARE(table->item(0, 0)->text(), QStringLiteral("Käufer"));
    QCOMPARE(table->item(0, 1)->text(), QStringLiteral("Anna"));
    QCOMPARE(table->item(1, 0)->text(), QStringLiteral("Seller")); // no translation: kept
    vx->SetActLang(1);
    QCOMPARE(fruit->text(0), QStringLiteral("Fruit"));

    // Keys are positions: a node put in front shifts the later ones, and a
    // rebuild keeps the lines there are, adding one for the new last index.
    tree->insertTopLevelItem(0, new QTreeWidgetItem({QStringLiteral("Milk")}));
    vx->BuildList();
    QCOMPARE(vx->ListView_TreeView_Items()->count(), 6);
    vx->SetActLang(2);
    QCOMPARE(tree->topLevelItem(0)->text(0), QStringLiteral("Obst")); // index 0's text
    QCOMPARE(tree->topLevelItem(1)->text(0), QStringLiteral("Apfel"));

    vx->DeleteLine(QStringLiteral("lvPeople"));
    QVERIFY(!vx->IsCompIncluded(QStringLiteral("lvPeople.Items[0]")));
    QVERIFY(vx->IsCompIncluded(QStringLiteral("lvPeople.Items[1]")));

    // A view leaving the form takes its lines along.
    delete tree;
    QVERIFY(!vx->IsCompIncluded(QStringLiteral("tvGoods")));
    QCOMPARE(vx->ListView_TreeView_Items()->count(), 1);
}

void TestVariants::itemTableInFiles()
{
    TOrders form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tvGoods"));
    new QTreeWidgetItem(tree, {QStringLiteral("Fruit")});
    auto *vx = new TVexilTLV(&form);
    vx->SetNumLang(2);
    vx->BuildList();
    vx->ReplaceStringValue(vx->ListView_TreeView_Items(), QStringLiteral("tvGoods.Items[0].Text"),
                           QStringLiteral("Obst"), 2);
    const QString file = m_dir->filePath(QStringLiteral("items.lng"));
    vx->SaveAllToFile(file, QLatin1Char('|'));
    QVERIFY(contents(file).contains("[ListView_TreeView_Items]"));
    QVERIFY(contents(file).contains("Orders.tvGoods.Items-0+.Text=Fruit|Obst|"));

    TOrders other;
    auto *otherTree = new QTreeWidget(&other);
    otherTree->setObjectName(QStringLiteral("tvGoods"));
    new QTreeWidgetItem(otherTree, {QStringLiteral("Fruit")});
    auto *loaded = new TVexilTLV(&other);
    loaded->SetNumLang(2);
    loaded->SetActLang(2);
    loaded->LoadAllFromFile(file, true);
    QCOMPARE(otherTree->topLevelItem(0)->text(0), QStringLiteral("Obst"));
}

QTEST_MAIN(TestVariants)
#include "tst_variants.moc"
