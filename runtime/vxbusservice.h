#pragma once

#include "vexil_export.h"

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtDBus/QDBusMessage>

namespace Vexil {

/// Name under which the dictionary manager serves on the session bus:
/// "dicmngr.TVexilDicMngr", or the name in the environment variable
/// VEXIL_DICTIONARY_SERVICE (a second memory run under its own name).
VEXIL_EXPORT QString dictionaryServiceName();

/// Whether @p service can be called on the session bus: some program owns
/// the name, or the bus can start one for it. False without a session bus.
VEXIL_EXPORT bool busServiceAvailable(const QString &service);

/// A call of @p method on @p service's object "/" with interface @p interface,
/// not sent yet. Throws EVexilError when there is no session bus.
VEXIL_EXPORT QDBusMessage busMethodCall(const QString &service, const QString &interface, const char *method,
                                        const QVariantList &args);
/// The first value of a method call's @p reply. Throws EVexilError for an
/// error reply, its message after "@p who: ".
VEXIL_EXPORT QVariant busReplyValue(const QDBusMessage &reply, const QString &who);

} // namespace Vexil
