#pragma once

#include "vexil_export.h"

#include <QtCore/QSettings>
#include <QtCore/QString>

#include <memory>

namespace Vexil {

/// Where a registry path is rooted: the current user's or the machine's.
enum class SettingsRoot { CurrentUser, System };

/// The settings of registry key @p keyPath (for example
/// "Software\Borland\TVexil\EditorForm"). On Windows that is the registry
/// key below the root; elsewhere the native settings of the organisation
/// and application named by the path's first parts after a leading
/// "Software", the rest of the path being the group.
VEXIL_EXPORT std::unique_ptr<QSettings> openSettingsKey(const QString &keyPath,
                                                       SettingsRoot root = SettingsRoot::CurrentUser);

/// The registry path of the suite's design-time tools.
VEXIL_EXPORT QString toolsKeyPath();

} // namespace Vexil
