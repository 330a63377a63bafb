#include "vxformstorage.h"

#include "vxerrors.h"
#include "vxloadwatcher.h"
#include "vxsettings.h"

#include <QtCore/QSettings>

#include <memory>

namespace {

const quint32 rootHandles[] = {0x80000001, 0x80000000, 0x80000002, 0x80000003, 0x80000005, 0x80000006};

std::unique_ptr<QSettings> openKey(TvxFormStorage::TMyHKeyType root, const QString &subKey)
{
#ifdef Q_OS_WIN
    static const char *const rootNames[] = {"HKEY_CURRENT_USER", "HKEY_CLASSES_ROOT", "HKEY_LOCAL_MACHINE",
                                            "HKEY_USERS", "HKEY_CURRENT_CONFIG", "HKEY_DYN_DATA"};
    return std::make_unique<QSettings>(QLatin1String(rootNames[root]) + QLatin1Char('\\') + subKey,
                                       QSettings::NativeFormat);
#else
    return Vexil::openSettingsKey(subKey, root == TvxFormStorage::vxHKEY_CURRENT_USER ? Vexil::SettingsRoot::CurrentUser
                                                                                       : Vexil::SettingsRoot::System);
#endif
}

// A number value as the registry holds it: missing or not a whole number is an error.
int readInteger(const QSettings &settings, const QString &name)
{
    bool ok = false;
    const int value = settings.value(name).toInt(&ok);
    if (!ok)
        throw EConvertError(QStringLiteral("Invalid value for \"%1\"").arg(name));
    return value;
}

} // namespace

TvxFormStorage::TvxFormStorage(QWidget *parent)
    : QWidget(parent)
    , m_form(parent ? parent->window() : nullptr)
{
    if (!m_form)
        throw EVexilError(QStringLiteral("Invalid class typecast"));
    hide();
    setAttribute(Qt::WA_DontShowOnScreen);
    m_loadWatcher = new TvxLoadWatcher(m_form, [this] { Loaded(); }, this);
}

TvxFormStorage::~TvxFormStorage()
{
    try {
        FormDestroing();
    } catch (...) {
        // A destructor cannot pass an error on; the old placement stays.
    }
}

void TvxFormStorage::SetRegRootKey(TMyHKeyType key)
{
    if (key == m_rootKey || key < vxHKEY_CURRENT_USER || key > vxHKEY_DYN_DATA)
        return;
    m_rootKey = key;
    m_rootHandle = rootHandles[key];
}

void TvxFormStorage::Loaded()
{
    if (m_loadWatcher->isLoading()) {
        m_loadWatcher->finish(); // comes back here once
        return;
    }
    restore();
}

void TvxFormStorage::restore()
{
    if (!m_active || m_designing || !m_form)
        return;
    const QPoint pos = m_form->pos();
    const QSize size = m_form->size();
    // Moving or resizing a shown window drops its maximized or full-screen
    // state, so the state is put back wherever the stored one does not
    // replace it.
    const Qt::WindowStates windowState = m_form->windowState();
    const std::unique_ptr<QSettings> settings = openKey(m_rootKey, m_subKey);
    try {
        const QString state = settings->value(QStringLiteral("State")).toString();
        if (state.isEmpty())
            return;
        int top = readInteger(*settings, QStringLiteral("Top"));
        m_form->move(m_form->x(), top);
        int left = readInteger(*settings, QStringLiteral("Left"));
        m_form->move(left, m_form->y());
        int height = readInteger(*settings, QStringLiteral("Height"));
        m_form->resize(m_form->width(), height);
        int width = readInteger(*settings, QStringLiteral("Width"));
        m_form->resize(width, m_form->height());
        // The third letter alone tells the state: miNimized, noRmal, maXimized.
        const QString again = settings->value(QStringLiteral("State")).toString();
        const QChar third = again.size() >= 3 ? again.at(2) : QChar();
        if (third == QLatin1Char('n'))
            m_form->setWindowState(Qt::WindowMinimized);
        else if (third == QLatin1Char('r'))
            m_form->setWindowState(Qt::WindowNoState);
        else if (third == QLatin1Char('x'))
            m_form->setWindowState(Qt::WindowMaximized);
        else if (m_form->windowState() != windowState)
            m_form->setWindowState(windowState);
    } catch (const std::exception &) {
        // A damaged placement gives the designed one back.
        m_form->move(pos);
        m_form->resize(size);
        if (m_form->windowState() != windowState)
            m_form->setWindowState(windowState);
    }
}

void TvxFormStorage::FormDestroing()
{
    if (!m_active || m_designing || !m_form)
        return;
    const std::unique_ptr<QSettings> settings = openKey(m_rootKey, m_subKey);
    const Qt::WindowStates state = m_form->windowState();
    QString name = QStringLiteral("Normal");
    if (state & Qt::WindowMinimized)
        name = QStringLiteral("Minimized");
    else if (state & (Qt::WindowMaximized | Qt::WindowFullScreen))
        name = QStringLiteral("Maximized");
    settings->setValue(QStringLiteral("State"), name);
    if (name == QLatin1String("Normal")) {
        settings->setValue(QStringLiteral("Top"), m_form->y());
        settings->setValue(QStringLiteral("Left"), m_form->x());
        settings->setValue(QStringLiteral("Height"), m_form->height());
        settings->setValue(QStringLiteral("Width"), m_form->width());
    }
    settings->sync();
    if (settings->status() != QSettings::NoError)
        throw EVexilError(QStringLiteral("Cannot write the form placement to \"%1\"").arg(m_subKey));
}
