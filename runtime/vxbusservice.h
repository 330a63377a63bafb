#pragma once

#include "vexil_export.h"

#include <QtCore/QString>

namespace Vexil {

/// Name under which the dictionary manager serves on the session bus:
/// "dicmngr.TVexilDicMngr", or the name in the environment variable
/// VEXIL_DICTIONARY_SERVICE (a second memory run under its own name).
VEXIL_EXPORT QString dictionaryServiceName();

/// Whether @p service can be called on the session bus: some program owns
/// the name, or the bus can start one for it. False without a session bus.
VEXIL_EXPORT bool busServiceAvailable(const QString &service);

} // namespace Vexil
