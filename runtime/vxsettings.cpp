#include "vxsettings.h"

#include <QtCore/QStringList>

namespace Vexil {

std::unique_ptr<QSettings> openSettingsKey(const QString &keyPath, SettingsRoot root)
{
#ifdef Q_OS_WIN
    const QString rootName = root == SettingsRoot::CurrentUser ? QStringLiteral("HKEY_CURRENT_USER")
                                                               : QStringLiteral("HKEY_LOCAL_MACHINE");
    return std::make_unique<QSettings>(rootName + QLatin1Char('\\') + keyPath, QSettings::NativeFormat);
#else
    QStringList parts = QString(keyPath).replace(QLatin1Char('\\'), QLatin1Char('/')).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    if (!parts.isEmpty() && parts.first().compare(QLatin1String("Software"), Qt::CaseInsensitive) == 0)
        parts.removeFirst();
    const QString organization = parts.isEmpty() ? QStringLiteral("Vexil") : parts.takeFirst();
    const QString application = parts.isEmpty() ? QStringLiteral("FormStorage") : parts.takeFirst();
    const auto scope = root == SettingsRoot::CurrentUser ? QSettings::UserScope : QSettings::SystemScope;
    auto settings = std::make_unique<QSettings>(QSettings::NativeFormat, scope, organization, application);
    if (!parts.isEmpty())
        settings->beginGroup(parts.join(QLatin1Char('/')));
    return settings;
#endif
}

QString toolsKeyPath()
{
    return QStringLiteral("Software\\Borland\\TVexil");
}

} // namespace Vexil
