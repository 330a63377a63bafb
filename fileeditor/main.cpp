// vexil-editor: edits translation files, on its own or for a translation
// component that hands its file over on the session bus.
#include "vxbusprogram.h"
#include "vxfileeditorservice.h"
#include "vxfileeditorwindow.h"

#include <QtCore/QCommandLineParser>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {
void printError(const QString &message)
{
    std::fprintf(stderr, "vexil-editor: %s\n", qPrintable(message));
    std::fflush(stderr);
}
} // namespace

int main(int argc, char *argv[])
{
    Vexil::BusProgram::useOffscreenWithoutDisplay();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vexil-editor"));
    QApplication::setApplicationVersion(QStringLiteral(VEXIL_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Editor of Vexil translation files."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption serviceNameOption(
        QStringLiteral("service-name"),
        QStringLiteral("Name to own on the session bus (default: %1).").arg(TvxFileEditorService::interfaceName()),
        QStringLiteral("NAME"), TvxFileEditorService::interfaceName());
    const QCommandLineOption serviceOption(
        QStringLiteral("service"), QStringLiteral("Start without a file and wait for calls on the session bus."));
    parser.addOptions({serviceNameOption, serviceOption});
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The translation file to open."));
    parser.process(app);
    const bool serviceMode = parser.isSet(serviceOption);
    const QString serviceName = parser.value(serviceNameOption);

    TfrmFileEditor window;
    TvxFileEditorService service(&window);

    // Serving: the window comes and goes with the edits asked for, and the
    // program lasts as long as its bus.
    QDBusConnection bus = QDBusConnection::sessionBus();
    bool serving = false;
    if (bus.isConnected() && service.exportOn(bus)) {
        serving = bus.registerService(serviceName);
        if (!serving && serviceMode) {
            const QString reason = bus.lastError().isValid() ? bus.lastError().message() : QString();
            printError(QStringLiteral("the name \"%1\" is already taken on the session bus (is another"
                                      " editor running?)%2")
                           .arg(serviceName, reason.isEmpty() ? QString() : QStringLiteral(": ") + reason));
            return 2;
        }
    } else if (serviceMode) {
        printError(QStringLiteral("cannot serve on the session bus: %1").arg(bus.lastError().message()));
        return 1;
    }
    if (serviceMode) {
        QApplication::setQuitOnLastWindowClosed(false);
        Vexil::BusProgram::endWithSessionBus(bus, &app);
    }

    const QStringList files = parser.positionalArguments();
    if (!files.isEmpty()) {
        QString error;
        if (!window.openFile(files.first(), &error)) {
            printError(error);
            if (!serviceMode)
                return 1;
        }
    }
    if (!serviceMode || !files.isEmpty())
        window.show();

    const int result = app.exec();
    if (serving)
        bus.unregisterService(serviceName);
    return result;
}
