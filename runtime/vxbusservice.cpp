#include "vxbusservice.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>

namespace Vexil {

QString dictionaryServiceName()
{
    const QString chosen = qEnvironmentVariable("VEXIL_DICTIONARY_SERVICE");
    return chosen.isEmpty() ? QStringLiteral("dicmngr.TVexilDicMngr") : chosen;
}

bool busServiceAvailable(const QString &service)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface())
        return false;
    QDBusConnectionInterface *busInterface = bus.interface();
    if (busInterface->isServiceRegistered(service).value())
        return true;
    const QDBusReply<QStringList> activatable = busInterface->activatableServiceNames();
    return activatable.isValid() && activatable.value().contains(service);
}

} // namespace Vexil
