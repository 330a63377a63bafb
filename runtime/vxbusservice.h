#pragma once

#include "vexil_export.h"

#include <QtCore/QString>

namespace Vexil {

/// Name under which the dictionary manager serves on the session bus.
inline QString dictionaryServiceName() { return QStringLiteral("dicmngr.TVexilDicMngr"); }

/// Whether @p service can be called on the session bus: some program owns
/// the name, or the bus can start one for it. False without a session bus.
VEXIL_EXPORT bool busServiceAvailable(const QString &service);

} // namespace Vexil
