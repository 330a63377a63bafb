// The grid editor's dictionary commands against the real dictionary
// manager program on the tests' session bus.
#include "editorforms.h"
#include "dictionarymanager.h"
#include "vxbusservice.h"
#include "vxcomp.h"
#include "vxdictionaryclient.h"
#include "vxdlgform.h"
#include "vxgridmodel.h"

#include <QtCore/QSettings>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>

#include <memory>

namespace {

// An editor on the owner's strings with named language columns.
std::unique_ptr<TDlgForm> editor(TForm1 &owner, const QStringList &lines,
                                 const QStringList &names = {QStringLiteral("English"), QStringLiteral("German"),
                                                             QStringLiteral("French")})
{
    owner.vx->Strings()->setLines(lines);
    auto form = std::make_unique<TDlgForm>(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings());
    form->show();
    for (int c = 0; c < names.size(); ++c)
        form->model()->setHeader(c + 1, names.at(c));
    return form;
}

} // namespace

class TestDictClient : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void missingServiceDisablesTheCommands();
    void addFindAndAutoTranslate();
    void unnamedLanguagesAsk();
    void saveFalseKeepsTheConnection();
    void errorInTheMiddleOfAutoTranslate();
    void buttonsFollowTheGridFocus();
    void theBusStartsTheManager();

private:
    QTemporaryDir m_settings;
};

void TestDictClient::initTestCase()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_settings.path());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void TestDictClient::missingServiceDisablesTheCommands()
{
    qputenv("VEXIL_DICTIONARY_SERVICE", "org.vexil.test.nobody");
    TForm1 owner;
    auto form = editor(owner, {QStringLiteral("1\tYes\tJa\tOui\t")});
    for (const char *name : {"sbDictMan", "sbDictFind", "sbDictAuto", "sbDictAdd", "sbDictAddAll"})
        QVERIFY2(!tool(form.get(), name)->isEnabled(), name);
    auto *menu = form->findChild<QMenu *>(QStringLiteral("Dictionary1"));
    Q_EMIT menu->aboutToShow();
    for (QAction *item : menu->actions())
        QVERIFY(!item->isEnabled());
    // Focus does not bring them back; everything else works.
    form->grid()->setFocus();
    QVERIFY(!tool(form.get(), "sbDictFind")->isEnabled());
    form->BitBtn1Click();
    QVERIFY(form->applied());
}

void TestDictClient::addFindAndAutoTranslate()
{
    DictionaryManager manager;
    QVERIFY(manager.running());
    qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
    TForm1 owner;
    auto form = editor(owner, {QStringLiteral("1\tOpen\tÖffnen\tOuvrir\t"), QStringLiteral("2\tClose\tSchließen\t\t"),
                               QStringLiteral("3\t\tDrucken\tImprimer\t"), QStringLiteral("4\tHelp\t\t\t")});
    QVERIFY(tool(form.get(), "sbDictAddAll")->isEnabled());

    QTest::mouseClick(tool(form.get(), "sbDictAddAll"), Qt::LeftButton);
    QVERIFY(form->server());
    TvxDictionaryClient direct(manager.name());
    QCOMPARE(direct.GetTranslation(QStringLiteral("English"), QStringLiteral("German"), QStringLiteral("Close")),
             QStringLiteral("Schließen"));
    // A row whose first text is empty still gives its other pair.
    QCOMPARE(direct.GetTranslation(QStringLiteral("German"), QStringLiteral("French"), QStringLiteral("Drucken")),
             QStringLiteral("Imprimer"));
    // Only pairs with both texts: nothing for "Help".
    QCOMPARE(direct.GetTranslation(QStringLiteral("English"), QStringLiteral("German"), QStringLiteral("Help")),
             QString());

    // Find fills the current cell from the first language that has an answer.
    form->model()->setCell(0, 2, QString());
    form->grid()->setFocus();
    form->grid()->setCurrentIndex(form->model()->index(0, 2));
    QTest::mouseClick(tool(form.get(), "sbDictFind"), Qt::LeftButton);
    QCOMPARE(form->model()->cell(0, 2), QStringLiteral("Öffnen"));

    // Auto-translate overwrites cells that have an answer, keeps the others.
    form->model()->setCell(0, 3, QStringLiteral("wrong"));
    form->model()->setCell(3, 2, QStringLiteral("Hilfe"));
    QTest::mouseClick(tool(form.get(), "sbDictAuto"), Qt::LeftButton);
    QCOMPARE(form->model()->cell(0, 3), QStringLiteral("Ouvrir"));
    QCOMPARE(form->model()->cell(3, 2), QStringLiteral("Hilfe"));
    QCOMPARE(form->model()->cell(1, 3), QString()); // nothing known for French "Close"

    // Add row: the current row's pairs.
    form->model()->setCell(1, 3, QStringLiteral("Fermer"));
    form->grid()->setFocus();
    form->grid()->setCurrentIndex(form->model()->index(1, 1));
    QTest::mouseClick(tool(form.get(), "sbDictAdd"), Qt::LeftButton);
    QCOMPARE(direct.GetTranslation(QStringLiteral("English"), QStringLiteral("French"), QStringLiteral("Close")),
             QStringLiteral("Fermer"));
    QVERIFY(direct.IndexOfLang(QStringLiteral("FRENCH")) >= 0);
}

void TestDictClient::unnamedLanguagesAsk()
{
    DictionaryManager manager;
    QVERIFY(manager.running());
    qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
    TForm1 owner;
    auto form = editor(owner, {QStringLiteral("1\tYes\tJa\tOui\t")},
                       {QStringLiteral("English"), QStringLiteral("Language N2"), QStringLiteral("French")});
    QString question;
    for (const char *command : {"sbDictAddAll", "sbDictAuto"}) {
        answer("No", &question);
        QTest::mouseClick(tool(form.get(), command), Qt::LeftButton);
        QCOMPARE(question, QStringLiteral("You have unnamed languages. Continue?"));
        QVERIFY(!form->server());
    }
    TvxDictionaryClient direct(manager.name());
    QVERIFY(direct.IndexOfLang(QStringLiteral("English")) < 0);

    answer("Yes");
    QTest::mouseClick(tool(form.get(), "sbDictAddAll"), Qt::LeftButton);
    QVERIFY(form->server());
    QVERIFY(tool(form.get(), "sbDictMan")->isChecked()); // connecting shows the button down
    QCOMPARE(direct.GetTranslation(QStringLiteral("English"), QStringLiteral("Language N2"), QStringLiteral("Yes")),
             QStringLiteral("Ja"));
}

void TestDictClient::saveFalseKeepsTheConnection()
{
    {
        // A memory the user may only read cannot store: the connection stays
        // and the next show uses it again.
        QTemporaryDir shared;
        const QString file = shared.filePath(QStringLiteral("team.sqlite"));
        {
            DictionaryManager writer({}, file);
            QVERIFY(writer.running());
            TvxDictionaryClient(writer.name()).AddTranslation(QStringLiteral("English"), QStringLiteral("German"),
                                                              QStringLiteral("Yes"), QStringLiteral("Ja"));
            QVERIFY(TvxDictionaryClient(writer.name()).Save());
        }
        DictionaryManager manager({QStringLiteral("--read-only")}, file);
        QVERIFY(manager.running());
        qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
        TForm1 owner;
        auto form = editor(owner, {QStringLiteral("1\tYes\tJa\tOui\t")});
        QToolButton *show = tool(form.get(), "sbDictMan");
        QTest::mouseClick(show, Qt::LeftButton);
        QVERIFY(show->isChecked());
        TvxDictionaryClient *first = form->server();
        QVERIFY(first);
        QTest::mouseClick(show, Qt::LeftButton);
        QVERIFY(!show->isChecked());
        QCOMPARE(form->server(), first);
        QTest::mouseClick(show, Qt::LeftButton);
        QCOMPARE(form->server(), first);
    }
    DictionaryManager manager;
    QVERIFY(manager.running());
    qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
    TForm1 owner;
    auto form = editor(owner, {QStringLiteral("1\tYes\tJa\tOui\t")});
    // The menu item flips the button and runs it.
    QAction *show1 = form->findChild<QAction *>(QStringLiteral("Show1"));
    show1->trigger();
    QVERIFY(tool(form.get(), "sbDictMan")->isChecked());
    QVERIFY(form->server());
    show1->trigger();
    QVERIFY(!form->server()); // stored, so let go
}

void TestDictClient::errorInTheMiddleOfAutoTranslate()
{
    DictionaryManager manager;
    QVERIFY(manager.running());
    qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
    TvxDictionaryClient direct(manager.name());
    for (const char *word : {"One", "Two", "Four", "Five"})
        direct.AddTranslation(QStringLiteral("English"), QStringLiteral("German"), QLatin1String(word),
                              QStringLiteral("de-") + QLatin1String(word));
    QVERIFY(direct.Save());

    TForm1 owner;
    // The manager refuses the third row's text, longer than it takes.
    const QString huge(40000, QLatin1Char('x'));
    auto form = editor(owner, {QStringLiteral("1\tOne\t\t\t"), QStringLiteral("2\tTwo\t\t\t"),
                               QStringLiteral("3\t") + huge + QStringLiteral("\t\t\t"),
                               QStringLiteral("4\tFour\t\t\t"), QStringLiteral("5\tFive\t\t\t")});
    QString message;
    answer("OK", &message);
    QTest::mouseClick(tool(form.get(), "sbDictAuto"), Qt::LeftButton);
    QVERIFY(message.startsWith(QLatin1String("Dictionary manager: ")));
    QCOMPARE(form->model()->cell(0, 2), QStringLiteral("de-One"));
    QCOMPARE(form->model()->cell(1, 2), QStringLiteral("de-Two"));
    QCOMPARE(form->model()->cell(3, 2), QString());
    QVERIFY(form->isVisible()); // the editor carries on
    form->BitBtn1Click();
    QVERIFY(form->result().at(0).contains(QLatin1String("de-One")));
}

void TestDictClient::buttonsFollowTheGridFocus()
{
    DictionaryManager manager;
    QVERIFY(manager.running());
    qputenv("VEXIL_DICTIONARY_SERVICE", manager.name().toUtf8());
    TForm1 owner;
    auto form = editor(owner, {QStringLiteral("1\tYes\tJa\tOui\t")});
    form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    form->grid()->setFocus();
    QTRY_VERIFY(tool(form.get(), "sbDictFind")->isEnabled());
    QVERIFY(tool(form.get(), "sbDictAdd")->isEnabled());
    form->findChild<QWidget *>(QStringLiteral("cbComponents"))->setFocus();
    QTRY_VERIFY(!tool(form.get(), "sbDictFind")->isEnabled());
    QVERIFY(!tool(form.get(), "sbDictAdd")->isEnabled());
    QVERIFY(tool(form.get(), "sbDictAuto")->isEnabled()); // not tied to a cell
}

void TestDictClient::theBusStartsTheManager()
{
    // The tests' bus knows the build tree's service file.
    qunsetenv("VEXIL_DICTIONARY_SERVICE");
    const QString name = Vexil::dictionaryServiceName();
    QCOMPARE(name, QStringLiteral("dicmngr.TVexilDicMngr"));
    QVERIFY(Vexil::busServiceAvailable(name));
    TvxDictionaryClient client(name);
    client.AddTranslation(QStringLiteral("English"), QStringLiteral("Russian"), QStringLiteral("Yes"),
                          QStringLiteral("Да"));
    QVERIFY(QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value());
    QCOMPARE(client.GetTranslation(QStringLiteral("Russian"), QStringLiteral("English"), QStringLiteral("Да")),
             QStringLiteral("Yes"));
    QVERIFY(client.Save());
}

QTEST_MAIN(TestDictClient)
#include "tst_dictclient.moc"
