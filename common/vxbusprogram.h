#pragma once

// Start-up and shut-down pieces every program of the suite that serves on
// the session bus shares: the dictionary manager and the translation-file
// editor. Header only, so a program needs no library for it.

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtCore/QtGlobal>
#include <QtDBus/QDBusConnection>

namespace Vexil::BusProgram {

/// Started by the bus without a display, a program still answers: it runs
/// on the offscreen platform unless a platform was named. Call before the
/// application object is created.
inline void useOffscreenWithoutDisplay()
{
#ifdef Q_OS_LINUX
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY")
        && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
}

/// When the session bus ends (the user's session, a test's private bus),
/// nobody can reach the program any more: the event loop ends with 0.
/// Qt has no signal for a lost connection, so it is checked once a second.
inline void endWithSessionBus(const QDBusConnection &bus, QCoreApplication *app)
{
    auto *watch = new QTimer(app);
    QObject::connect(watch, &QTimer::timeout, app, [bus] {
        if (!bus.isConnected())
            QCoreApplication::exit(0);
    });
    watch->start(1000);
}

} // namespace Vexil::BusProgram
