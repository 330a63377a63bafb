// The dictionary manager's window over a real store: searching, editing in
// place, deleting, TMX import and export through the file dialogs, closing.
#include "dialogdriver.h"
#include "vxdictstore.h"
#include "vxdictwindow.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QTest>
#include <QtGui/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>

namespace {

// Picks @p fileName in the next file dialog, then runs @p then.
void chooseFile(const QString &fileName, std::function<void()> then = {})
{
    onNextModal([fileName, then](QWidget *modal) {
        auto *dialog = qobject_cast<QFileDialog *>(modal);
        QVERIFY(dialog);
        // What a user types into the name field.
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(fileName);
        if (then)
            then();
        QMetaObject::invokeMethod(dialog, "accept");
    });
}

// Presses the button with role @p role of the next message box, noting its text.
void answerBox(QMessageBox::StandardButton button, QString *text = nullptr)
{
    onNextModal([button, text](QWidget *modal) {
        auto *box = qobject_cast<QMessageBox *>(modal);
        QVERIFY(box);
        if (text)
            *text = box->text();
        box->button(button)->click();
    });
}

} // namespace

class TestDictWindow : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }
    void fill(TvxDictionaryStore &store)
    {
        store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("RUSSIAN"), QStringLiteral("Open"),
                             QStringLiteral("Открыть"));
        store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("RUSSIAN"), QStringLiteral("Close"),
                             QStringLiteral("Закрыть"));
        store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("ARABIC"), QStringLiteral("Open"),
                             QStringLiteral("فتح"));
    }

private slots:
    void showsLanguagesUnitsAndCount();
    void editsAndDeletesInTheStore();
    void importsAndExportsTmx();
    void damagedImportIsReported();
    void readOnlyWindowChangesNothing();
    void closingSavesWhatIsPending();
};

void TestDictWindow::showsLanguagesUnitsAndCount()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("show.sqlite"))));
    fill(store);
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));

    auto *languages = window.findChild<QListWidget *>(QStringLiteral("lbLanguages"));
    QCOMPARE(languages->count(), 3);
    QCOMPARE(languages->item(2)->text(), QStringLiteral("ARABIC"));
    auto *table = window.findChild<QTableView *>(QStringLiteral("tvUnits"));
    QCOMPARE(table->model()->rowCount(), 2);
    QCOMPARE(table->model()->columnCount(), 3);
    QCOMPARE(table->model()->headerData(1, Qt::Horizontal).toString(), QStringLiteral("RUSSIAN"));
    QCOMPARE(table->model()->index(0, 2).data().toString(), QStringLiteral("فتح"));
    auto *count = window.findChild<QLabel *>(QStringLiteral("lbCount"));
    QVERIFY2(count->text().startsWith(QLatin1String("2 units")), qPrintable(count->text()));

    auto *search = window.findChild<QLineEdit *>(QStringLiteral("edSearch"));
    search->insert(QStringLiteral("ЗАКР"));  // as typed through an input method
    QCOMPARE(table->model()->rowCount(), 1);
    QCOMPARE(table->model()->index(0, 0).data().toString(), QStringLiteral("Close"));
    QVERIFY2(count->text().startsWith(QLatin1String("1 shown of 2 units")), qPrintable(count->text()));
    search->clear();
    QCOMPARE(table->model()->rowCount(), 2);

    // Changes made elsewhere (by a client on the bus) show up.
    store.addTranslation(QStringLiteral("ENGLISH"), QStringLiteral("GREEK"), QStringLiteral("Save"),
                         QStringLiteral("Αποθήκευση"));
    window.storeChanged();
    QTRY_COMPARE(table->model()->rowCount(), 3);
    QCOMPARE(languages->count(), 4);

    table->resizeRowsToContents();
    const QImage shot = window.grab().toImage();
    QVERIFY(!shot.isNull());
    shot.save(QCoreApplication::applicationDirPath() + QStringLiteral("/dictionary-window.png"));
}

void TestDictWindow::editsAndDeletesInTheStore()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("edit.sqlite"))));
    fill(store);
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto *table = window.findChild<QTableView *>(QStringLiteral("tvUnits"));

    // Typing over a cell in place, as a user does.
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    table->setFocus();
    table->setCurrentIndex(table->model()->index(1, 1));
    QTest::keyClick(table, Qt::Key_F2);
    auto *editor = qobject_cast<QLineEdit *>(QApplication::focusWidget());
    QVERIFY(editor);
    editor->selectAll();
    editor->insert(QStringLiteral("Закрыть окно"));
    QTest::keyClick(editor, Qt::Key_Return);  // commits through a queued call
    QTRY_COMPARE(store.getTranslation(QStringLiteral("ENGLISH"), QStringLiteral("RUSSIAN"), QStringLiteral("Close")),
             QStringLiteral("Закрыть окно"));

    // A text that is too long is refused with a message; the cell keeps its text.
    QString message;
    answerBox(QMessageBox::Ok, &message);
    QVERIFY(!table->model()->setData(table->model()->index(0, 0), QString(40000, QLatin1Char('x'))));
    QVERIFY2(message.contains(QLatin1String("32768")), qPrintable(message));
    QCOMPARE(table->model()->index(0, 0).data().toString(), QStringLiteral("Open"));

    // Delete asks first; No keeps the unit, Yes removes it.
    table->selectRow(0);
    auto *remove = window.findChild<QAction *>(QStringLiteral("actDelete"));
    QVERIFY(remove->isEnabled());
    answerBox(QMessageBox::No);
    remove->trigger();
    QCOMPARE(store.unitCount(), 2);
    table->selectRow(0);
    answerBox(QMessageBox::Yes);
    remove->trigger();
    QCOMPARE(store.unitCount(), 1);
    QCOMPARE(table->model()->rowCount(), 1);
    QCOMPARE(store.getTranslation(QStringLiteral("ENGLISH"), QStringLiteral("ARABIC"), QStringLiteral("Open")),
             QString());
}

void TestDictWindow::importsAndExportsTmx()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("export.sqlite"))));
    fill(store);
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QString tmx = path(QStringLiteral("export.tmx"));
    chooseFile(tmx);
    window.findChild<QAction *>(QStringLiteral("actExport"))->trigger();
    QVERIFY(QFile::exists(tmx));

    TvxDictionaryStore other;
    QVERIFY(other.open(path(QStringLiteral("import.sqlite"))));
    other.addLanguage(QStringLiteral("Russian"));
    TfrmDictionary otherWindow(&other);
    otherWindow.show();
    QVERIFY(QTest::qWaitForWindowExposed(&otherWindow));
    chooseFile(tmx);
    otherWindow.findChild<QAction *>(QStringLiteral("actImport"))->trigger();
    QCOMPARE(other.unitCount(), 2);
    QCOMPARE(other.languages(), (QStringList{QStringLiteral("Russian"), QStringLiteral("en"), QStringLiteral("ar")}));
    QCOMPARE(other.getTranslation(QStringLiteral("ar"), QStringLiteral("russian"), QStringLiteral("فتح")),
             QStringLiteral("Открыть"));
    QCOMPARE(otherWindow.findChild<QTableView *>(QStringLiteral("tvUnits"))->model()->rowCount(), 2);
}

void TestDictWindow::damagedImportIsReported()
{
    TvxDictionaryStore store;
    QVERIFY(store.open(path(QStringLiteral("damaged-import.sqlite"))));
    fill(store);
    const QString tmx = path(QStringLiteral("damaged.tmx"));
    {
        QFile file(tmx);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<tmx version=\"1.4\"><body>\n<tu><tuv xml:lang=\"en\"><seg>a</seg></tuv>\n"
                   "<tuv xml:lang=\"de\"><seg>b</seg></tuv></tu>\n<tu><tuv xml:lang=\"en\"><seg>c</tu>\n");
    }
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QString message;
    chooseFile(tmx, [&message] { answerBox(QMessageBox::Ok, &message); });
    window.findChild<QAction *>(QStringLiteral("actImport"))->trigger();
    QVERIFY2(message.contains(QLatin1String("line 4")), qPrintable(message));
    QCOMPARE(store.unitCount(), 2);
    QCOMPARE(store.languages().size(), 3);
}

void TestDictWindow::readOnlyWindowChangesNothing()
{
    const QString file = path(QStringLiteral("readonly.sqlite"));
    {
        TvxDictionaryStore store;
        QVERIFY(store.open(file));
        fill(store);
        QVERIFY(store.save());
    }
    TvxDictionaryStore store;
    QVERIFY(store.open(file, true));
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    auto *table = window.findChild<QTableView *>(QStringLiteral("tvUnits"));
    QCOMPARE(table->model()->rowCount(), 2);
    QVERIFY(!(table->model()->flags(table->model()->index(0, 0)) & Qt::ItemIsEditable));
    table->selectRow(0);
    for (const char *name : {"actSave", "actImport", "actDelete", "actAddLanguage"})
        QVERIFY2(!window.findChild<QAction *>(QLatin1String(name))->isEnabled(), name);
    QVERIFY(window.findChild<QAction *>(QStringLiteral("actExport"))->isEnabled());
    QVERIFY(window.findChild<QLabel *>(QStringLiteral("lbCount"))->text().contains(QLatin1String("read-only")));
    QVERIFY(window.close());
}

void TestDictWindow::closingSavesWhatIsPending()
{
    const QString file = path(QStringLiteral("close.sqlite"));
    TvxDictionaryStore store;
    QVERIFY(store.open(file));
    TfrmDictionary window(&store);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    fill(store);
    QVERIFY(store.isModified());
    bool closed = false;
    connect(&window, &TfrmDictionary::closedByUser, this, [&closed] { closed = true; });
    QVERIFY(window.close());
    QVERIFY(closed);
    QVERIFY(!window.isVisible());
    QVERIFY(!store.isModified());
    store.close();  // drops anything unsaved: nothing is left to drop
    QVERIFY(store.open(file));
    QCOMPARE(store.unitCount(), 2);
}

QTEST_MAIN(TestDictWindow)
#include "tst_dictwindow.moc"
