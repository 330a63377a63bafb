#include "vxbusservice.h"

#include "vxerrors.h"

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

QDBusMessage busMethodCall(const QString &service, const QString &interface, const char *method,
                           const QVariantList &args)
{
    if (!QDBusConnection::sessionBus().isConnected())
        throw EVexilError(QStringLiteral("\"%1\" cannot be reached: there is no session bus.").arg(service));
    QDBusMessage message = QDBusMessage::createMethodCall(service, QStringLiteral("/"), interface,
                                                          QLatin1String(method));
    message.setArguments(args);
    return message;
}

QVariant busReplyValue(const QDBusMessage &reply, const QString &who)
{
    if (reply.type() == QDBusMessage::ErrorMessage)
        throw EVexilError(QStringLiteral("%1: %2").arg(who, reply.errorMessage()));
    return reply.arguments().value(0);
}

} // namespace Vexil
