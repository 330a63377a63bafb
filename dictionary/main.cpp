// vexil-dictionary: the translation memory that the grid editor's dictionary
// commands talk to on the session bus.
#include "vxbusprogram.h"
#include "vxdicmngrservice.h"
#include "vxdictstore.h"
#include "vxdictwindow.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QSocketNotifier>
#include <QtCore/QStandardPaths>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtWidgets/QApplication>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int signalPipe[2] = {-1, -1};

void onTerminate(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[0], &byte, 1);
}

// SIGTERM and SIGINT end the event loop without saving: the open
// transaction is rolled back, exactly as if the process had been killed.
void watchTermination(QObject *parent)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0)
        return;
    auto *notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, parent);
    QObject::connect(notifier, &QSocketNotifier::activated, parent, [] {
        char byte;
        [[maybe_unused]] const auto got = ::read(signalPipe[1], &byte, 1);
        QCoreApplication::exit(0);
    });
    struct sigaction action = {};
    action.sa_handler = onTerminate;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}
} // namespace
#endif

namespace {
void printError(const QString &message)
{
    std::fprintf(stderr, "vexil-dictionary: %s\n", qPrintable(message));
    std::fflush(stderr);
}
} // namespace

int main(int argc, char *argv[])
{
    Vexil::BusProgram::useOffscreenWithoutDisplay();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vexil-dictionary"));
    QApplication::setApplicationVersion(QStringLiteral(VEXIL_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Translation memory for the Vexil grid editor."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption databaseOption(
        QStringLiteral("database"), QStringLiteral("The dictionary file (default: %1)."), QStringLiteral("FILE"));
    const QCommandLineOption serviceOption(
        QStringLiteral("service-name"),
        QStringLiteral("Name to own on the session bus (default: %1).").arg(TvxDicMngrService::interfaceName()),
        QStringLiteral("NAME"), TvxDicMngrService::interfaceName());
    const QCommandLineOption readOnlyOption(
        QStringLiteral("read-only"), QStringLiteral("Consult the dictionary without changing it."));
    const QCommandLineOption showOption(QStringLiteral("show"), QStringLiteral("Show the window at start."));
    parser.addOptions({databaseOption, serviceOption, readOnlyOption, showOption});
    parser.process(app);

    QString database = parser.value(databaseOption);
    if (database.isEmpty()) {
        const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
        QDir().mkpath(folder);
        database = QDir(folder).filePath(QStringLiteral("dictionary.sqlite"));
    }
    const bool readOnly = parser.isSet(readOnlyOption);

    TvxDictionaryStore store;
    if (!store.open(database, readOnly)) {
        // Keep serving: every call answers with this message until the file
        // can be opened, so the editor's user sees what is wrong.
        printError(store.errorString());
    }

    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        printError(QStringLiteral("cannot connect to the session bus: %1").arg(bus.lastError().message()));
        return 1;
    }
    TvxDicMngrService service(&store, database, readOnly);
    if (!service.exportOn(bus)) {
        printError(QStringLiteral("cannot register the object \"/\" on the session bus."));
        return 1;
    }
    const QString serviceName = parser.value(serviceOption);
    if (!bus.registerService(serviceName)) {
        const QString reason = bus.lastError().isValid() ? bus.lastError().message() : QString();
        printError(QStringLiteral("the name \"%1\" is already taken on the session bus (is another"
                                  " dictionary manager running?)%2")
                       .arg(serviceName, reason.isEmpty() ? QString() : QStringLiteral(": ") + reason));
        return 2;
    }

    TfrmDictionary window(&store);
    window.setWindowTitle(QStringLiteral("Dictionary - %1%2")
                              .arg(QDir::toNativeSeparators(QFileInfo(database).fileName()),
                                   readOnly ? QStringLiteral(" (read-only)") : QString()));
    QObject::connect(&service, &TvxDicMngrService::changed, &window, &TfrmDictionary::storeChanged);
    QObject::connect(&service, &TvxDicMngrService::visibilityRequested, &window, [&window](bool visible) {
        if (visible) {
            window.show();
            window.raise();
            window.activateWindow();
        } else {
            window.hide();
        }
    });
    QObject::connect(&window, &TfrmDictionary::closedByUser, &app, [] { QCoreApplication::exit(0); });
#ifdef Q_OS_UNIX
    watchTermination(&app);
#endif
    // When the session bus ends, the manager ends too, saving nothing.
    Vexil::BusProgram::endWithSessionBus(bus, &app);
    if (parser.isSet(showOption))
        window.show();

    const int result = app.exec();
    bus.unregisterService(serviceName);
    store.close();
    return result;
}
