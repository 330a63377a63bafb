// The dictionary manager program on the session bus: each test starts real
// instances under names of its own and calls them as the grid editor does.
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusInterface>
#include <QtDBus/QDBusReply>
#include <QtTest/QTest>

#include <memory>

#include <csignal>
#include <sys/types.h>

namespace {

const QString Interface = QStringLiteral("dicmngr.TVexilDicMngr");

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool nameOwned(const QString &name)
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value();
}

// One running vexil-dictionary.
class Manager
{
public:
    explicit Manager(const QString &database, const QStringList &options = {})
    {
        static int counter = 0;
        service = QStringLiteral("dicmngr.test.p%1.n%2").arg(QCoreApplication::applicationPid()).arg(++counter);
        start(database, options);
    }
    Manager(const QString &database, const QString &serviceName, const QStringList &options)
        : service(serviceName)
    {
        start(database, options);
    }
    ~Manager()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }

    /// Waits until the program owns its name (or has ended).
    bool ready()
    {
        (void)QTest::qWaitFor([this] { return nameOwned(service) || process.state() == QProcess::NotRunning; },
                              60000);
        return nameOwned(service);
    }
    std::unique_ptr<QDBusInterface> iface() const
    {
        return std::make_unique<QDBusInterface>(service, QStringLiteral("/"), Interface);
    }
    /// What the program wrote to stderr so far.
    QString errors()
    {
        m_errors += QString::fromLocal8Bit(process.readAllStandardError());
        return m_errors;
    }

    QString service;
    QProcess process;

private:
    QString m_errors;

    void start(const QString &database, const QStringList &options)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(env);
        process.setProgram(QStringLiteral(VEXIL_DICTIONARY_EXE));
        process.setArguments(QStringList{QStringLiteral("--database"), database, QStringLiteral("--service-name"),
                                         service} + options);
        process.start();
    }
};

QString translate(QDBusInterface &dic, const QString &source, const QString &target, const QString &text)
{
    QDBusReply<QString> reply = dic.call(QStringLiteral("GetTranslation"), source, target, text);
    return reply.isValid() ? reply.value() : QStringLiteral("<error: %1>").arg(reply.error().message());
}

int indexOf(QDBusInterface &dic, const QString &language)
{
    QDBusReply<int> reply = dic.call(QStringLiteral("IndexOfLang"), language);
    return reply.isValid() ? reply.value() : -100;
}

QDBusMessage add(QDBusInterface &dic, const QString &lang1, const QString &lang2, const QString &text1,
                 const QString &text2)
{
    return dic.call(QStringLiteral("AddTranslation"), lang1, lang2, text1, text2);
}

bool added(const QDBusMessage &reply) { return reply.type() == QDBusMessage::ReplyMessage; }

bool save(QDBusInterface &dic)
{
    QDBusReply<bool> reply = dic.call(QStringLiteral("Save"));
    return reply.isValid() && reply.value();
}

// A session bus of the test's own, reading the build tree's service files.
class PrivateBus
{
public:
    QTemporaryDir home;
    QString address;
    QProcess daemon;

    ~PrivateBus() { stop(); }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), address);
        env.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        return env;
    }
    bool start()
    {
        const QString socket = home.filePath(QStringLiteral("bus"));
        address = QStringLiteral("unix:path=") + socket;
        QFile config(home.filePath(QStringLiteral("bus.conf")));
        if (!config.open(QIODevice::WriteOnly))
            return false;
        config.write(QStringLiteral(
            "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
            " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
            "<busconfig><type>session</type><listen>%1</listen><servicedir>%2</servicedir>\n"
            "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
            "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n")
                         .arg(address, QStringLiteral(VEXIL_DBUS_SERVICES_DIR))
                         .toUtf8());
        config.close();
        daemon.setProcessEnvironment(environment());
        daemon.start(QStringLiteral("dbus-daemon"),
                     {QStringLiteral("--nofork"), QStringLiteral("--config-file=") + config.fileName()});
        if (!daemon.waitForStarted())
            return false;
        return QTest::qWaitFor([&] { return QFile::exists(socket); }, 30000);
    }
    void stop()
    {
        if (daemon.state() != QProcess::NotRunning) {
            daemon.terminate();
            daemon.waitForFinished();
        }
    }
};

} // namespace

class TestDicMngr : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }

private slots:
    void initTestCase();
    void answersTheEditorsCalls();
    void refusalsBecomeErrorReplies();
    void readOnlyDictionaryAnswersButDoesNotSave();
    void killedManagerKeepsSavedPairsOnly();
    void terminatedManagerSavesNothing();
    void damagedFileIsReportedAndKept();
    void takenNameIsRefused();
    void activationFileStartsTheBuiltProgram();
    void managerEndsWithItsBus();
};

void TestDicMngr::initTestCase()
{
    if (!QDBusConnection::sessionBus().isConnected())
        QSKIP("no session bus: run under dbus-run-session");
    QVERIFY(QFile::exists(QStringLiteral(VEXIL_DICTIONARY_EXE)));
}

void TestDicMngr::answersTheEditorsCalls()
{
    Manager manager(path(QStringLiteral("calls.sqlite")));
    QVERIFY2(manager.ready(), qPrintable(manager.errors()));
    auto dic = manager.iface();
    QVERIFY2(dic->isValid(), qPrintable(dic->lastError().message()));

    QCOMPARE(indexOf(*dic, QStringLiteral("ENGLISH")), -1);
    QVERIFY(QDBusReply<void>(dic->call(QStringLiteral("AddLanguage"), QStringLiteral("ENGLISH"))).isValid());
    QCOMPARE(indexOf(*dic, QStringLiteral("english")), 0);
    QVERIFY(added(add(*dic, "ENGLISH", "GERMAN", "House", "Haus")));
    QVERIFY(added(add(*dic, "ENGLISH", QStringLiteral("日本語"), "House", QStringLiteral("家 🏠"))));
    QCOMPARE(indexOf(*dic, QStringLiteral("日本語")), 2);
    QCOMPARE(translate(*dic, "german", QStringLiteral("日本語"), "Haus"), QStringLiteral("家 🏠"));
    QCOMPARE(translate(*dic, "GERMAN", "ENGLISH", "Maus"), QString());
    QVERIFY(QDBusReply<void>(dic->call(QStringLiteral("SetVisible"), true)).isValid());
    QVERIFY(QDBusReply<void>(dic->call(QStringLiteral("SetVisible"), false)).isValid());
    QVERIFY(save(*dic));
    QCOMPARE(manager.process.state(), QProcess::Running);
}

void TestDicMngr::refusalsBecomeErrorReplies()
{
    Manager manager(path(QStringLiteral("errors.sqlite")));
    QVERIFY2(manager.ready(), qPrintable(manager.errors()));
    auto dic = manager.iface();
    const QString longText(32769, QLatin1Char('z'));

    QDBusMessage reply = add(*dic, "EN", "DE", QString(), "leer");
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    QVERIFY2(reply.errorMessage().contains(QLatin1String("empty")), qPrintable(reply.errorMessage()));

    for (const QString &method : {QStringLiteral("GetTranslation"), QStringLiteral("AddTranslation")}) {
        QList<QVariant> args{QStringLiteral("EN"), QStringLiteral("DE"), longText};
        if (method == QLatin1String("AddTranslation"))
            args.append(QStringLiteral("kurz"));
        reply = dic->callWithArgumentList(QDBus::Block, method, args);
        QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
        QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
        QVERIFY2(reply.errorMessage().contains(QLatin1String("32768")), qPrintable(reply.errorMessage()));
    }
    reply = dic->call(QStringLiteral("AddLanguage"), QString());
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);

    // The manager goes on answering, with nothing of the refused calls kept.
    QCOMPARE(manager.process.state(), QProcess::Running);
    QCOMPARE(indexOf(*dic, QStringLiteral("EN")), -1);
    QVERIFY(added(add(*dic, "EN", "DE", "Yes", "Ja")));
    QCOMPARE(translate(*dic, "DE", "EN", "Ja"), QStringLiteral("Yes"));
}

void TestDicMngr::readOnlyDictionaryAnswersButDoesNotSave()
{
    const QString database = path(QStringLiteral("shared.sqlite"));
    {
        Manager writer(database);
        QVERIFY(writer.ready());
        auto dic = writer.iface();
        QVERIFY(added(add(*dic, "EN", "DE", "Dog", "Hund")));
        QVERIFY(save(*dic));
        writer.process.terminate();
        QVERIFY(writer.process.waitForFinished());
    }
    const QByteArray before = fileBytes(database);
    Manager manager(database, {QStringLiteral("--read-only")});
    QVERIFY2(manager.ready(), qPrintable(manager.errors()));
    auto dic = manager.iface();
    QCOMPARE(translate(*dic, "de", "en", "Hund"), QStringLiteral("Dog"));
    QDBusMessage reply = add(*dic, "EN", "DE", "Cat", "Katze");
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(reply.errorName(), QStringLiteral("dicmngr.TVexilDicMngr.Error.ReadOnly"));
    QVERIFY2(reply.errorMessage().contains(database), qPrintable(reply.errorMessage()));
    reply = dic->call(QStringLiteral("AddLanguage"), QStringLiteral("FR"));
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QDBusReply<bool> saved = dic->call(QStringLiteral("Save"));
    QVERIFY(saved.isValid());  // an answer, not an error
    QVERIFY(!saved.value());
    manager.process.terminate();
    QVERIFY(manager.process.waitForFinished());
    QCOMPARE(fileBytes(database), before);
}

void TestDicMngr::killedManagerKeepsSavedPairsOnly()
{
    const QString database = path(QStringLiteral("killed.sqlite"));
    {
        Manager manager(database);
        QVERIFY(manager.ready());
        auto dic = manager.iface();
        QVERIFY(added(add(*dic, "EN", "DE", "Tree", "Baum")));
        QVERIFY(save(*dic));
        QVERIFY(added(add(*dic, "EN", "DE", "Flower", "Blume")));
        QVERIFY(added(add(*dic, "EN", "DE", "Tree", "Der Baum")));
        dic->call(QStringLiteral("AddLanguage"), QStringLiteral("FR"));
        QCOMPARE(translate(*dic, "EN", "DE", "Flower"), QStringLiteral("Blume"));
        manager.process.kill();
        QVERIFY(manager.process.waitForFinished());
        QCOMPARE(manager.process.exitStatus(), QProcess::CrashExit);
    }
    Manager again(database);
    QVERIFY2(again.ready(), qPrintable(again.errors()));
    auto dic = again.iface();
    QCOMPARE(translate(*dic, "EN", "DE", "Tree"), QStringLiteral("Baum"));
    QCOMPARE(translate(*dic, "EN", "DE", "Flower"), QString());
    QCOMPARE(indexOf(*dic, QStringLiteral("FR")), -1);
    // The dictionary is writable again after the interrupted session.
    QVERIFY(QDBusReply<void>(dic->call(QStringLiteral("AddLanguage"), QStringLiteral("FR"))).isValid());
    QVERIFY(save(*dic));
}

void TestDicMngr::terminatedManagerSavesNothing()
{
    const QString database = path(QStringLiteral("terminated.sqlite"));
    {
        Manager manager(database);
        QVERIFY(manager.ready());
        auto dic = manager.iface();
        QVERIFY(added(add(*dic, "EN", "DE", "Sun", "Sonne")));
        QVERIFY(save(*dic));
        QVERIFY(added(add(*dic, "EN", "DE", "Moon", "Mond")));
        manager.process.terminate();
        QVERIFY(manager.process.waitForFinished());
        QCOMPARE(manager.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(manager.process.exitCode(), 0);
        QVERIFY(!nameOwned(manager.service));
    }
    Manager again(database);
    QVERIFY(again.ready());
    auto dic = again.iface();
    QCOMPARE(translate(*dic, "EN", "DE", "Sun"), QStringLiteral("Sonne"));
    QCOMPARE(translate(*dic, "EN", "DE", "Moon"), QString());
}

void TestDicMngr::damagedFileIsReportedAndKept()
{
    const QString database = path(QStringLiteral("damaged.sqlite"));
    QByteArray garbage("SQLite format 3");
    garbage.append(QByteArray(8192, '\x5a'));
    {
        QFile file(database);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(garbage);
    }
    Manager manager(database);
    QVERIFY2(manager.ready(), qPrintable(manager.errors()));
    auto dic = manager.iface();
    QDBusMessage reply = dic->call(QStringLiteral("IndexOfLang"), QStringLiteral("EN"));
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QVERIFY2(reply.errorMessage().contains(database), qPrintable(reply.errorMessage()));
    reply = add(*dic, "EN", "DE", "a", "b");
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    reply = dic->call(QStringLiteral("Save"));
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QTRY_VERIFY_WITH_TIMEOUT(manager.errors().contains(database), 30000);
    QCOMPARE(fileBytes(database), garbage);

    // Once the file is out of the way, the same manager makes a new one.
    QVERIFY(QFile::rename(database, database + QStringLiteral(".bad")));
    QVERIFY(QDBusReply<void>(dic->call(QStringLiteral("AddLanguage"), QStringLiteral("EN"))).isValid());
    QCOMPARE(indexOf(*dic, QStringLiteral("en")), 0);
    QCOMPARE(fileBytes(database + QStringLiteral(".bad")), garbage);
}

void TestDicMngr::takenNameIsRefused()
{
    Manager first(path(QStringLiteral("first.sqlite")));
    QVERIFY(first.ready());
    Manager second(path(QStringLiteral("second.sqlite")), first.service, {});
    QVERIFY(second.process.waitForFinished(60000));
    QCOMPARE(second.process.exitStatus(), QProcess::NormalExit);
    QVERIFY(second.process.exitCode() != 0);
    const QString errors = second.errors();
    QVERIFY2(errors.contains(first.service), qPrintable(errors));
    // The first one still answers.
    QCOMPARE(QDBusReply<int>(first.iface()->call(QStringLiteral("IndexOfLang"), QStringLiteral("EN"))).value(), -1);
}

void TestDicMngr::activationFileStartsTheBuiltProgram()
{
    QFile file(QStringLiteral(VEXIL_DBUS_SERVICES_DIR "/dicmngr.TVexilDicMngr.service"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    QVERIFY(lines.contains(QStringLiteral("[D-BUS Service]")));
    QVERIFY(lines.contains(QStringLiteral("Name=dicmngr.TVexilDicMngr")));
    QVERIFY2(lines.contains(QStringLiteral("Exec=" VEXIL_DICTIONARY_EXE)), qPrintable(lines.join(QLatin1Char('|'))));

    // A bus of our own that reads that folder starts the manager on the
    // first call, with its dictionary in the default place.
    PrivateBus bus;
    if (!bus.start())
        QSKIP("dbus-daemon cannot be started here");
    qint64 managerPid = 0;
    {
        QDBusConnection connection = QDBusConnection::connectToBus(bus.address, QStringLiteral("activation"));
        QVERIFY2(connection.isConnected(), qPrintable(connection.lastError().message()));
        QDBusInterface dic(Interface, QStringLiteral("/"), Interface, connection);
        dic.setTimeout(120000);
        QCOMPARE(indexOf(dic, "ENGLISH"), -1);
        QVERIFY(added(add(dic, "ENGLISH", "GERMAN", "Bread", "Brot")));
        QVERIFY(save(dic));
        managerPid = connection.interface()->servicePid(Interface).value();
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("activation"));
    QVERIFY(managerPid > 0);
    QVERIFY(QFile::exists(bus.home.filePath(QStringLiteral("data/vexil-dictionary/dictionary.sqlite"))));
    ::kill(pid_t(managerPid), SIGTERM);
}

void TestDicMngr::managerEndsWithItsBus()
{
    PrivateBus bus;
    if (!bus.start())
        QSKIP("dbus-daemon cannot be started here");
    const QString database = path(QStringLiteral("busgone.sqlite"));
    QProcess manager;
    QProcessEnvironment env = bus.environment();
    manager.setProcessEnvironment(env);
    manager.start(QStringLiteral(VEXIL_DICTIONARY_EXE), {QStringLiteral("--database"), database});
    QVERIFY(manager.waitForStarted());
    {
        QDBusConnection connection = QDBusConnection::connectToBus(bus.address, QStringLiteral("ending"));
        QVERIFY(connection.isConnected());
        QTRY_VERIFY_WITH_TIMEOUT(connection.interface()->isServiceRegistered(Interface).value(), 60000);
        QDBusInterface dic(Interface, QStringLiteral("/"), Interface, connection);
        QVERIFY(added(add(dic, "EN", "DE", "Day", "Tag")));
        QVERIFY(save(dic));
        QVERIFY(added(add(dic, "EN", "DE", "Night", "Nacht")));
    }
    QDBusConnection::disconnectFromBus(QStringLiteral("ending"));
    bus.stop();
    QVERIFY(manager.waitForFinished(60000));
    QCOMPARE(manager.exitStatus(), QProcess::NormalExit);
    QCOMPARE(manager.exitCode(), 0);

    Manager again(database);
    QVERIFY(again.ready());
    auto dic = again.iface();
    QCOMPARE(translate(*dic, "DE", "EN", "Tag"), QStringLiteral("Day"));
    QCOMPARE(translate(*dic, "DE", "EN", "Nacht"), QString());
}

QTEST_GUILESS_MAIN(TestDicMngr)
#include "tst_dicmngr.moc"
