#include "vxvexilrtse.h"

#include "vxbusservice.h"
#include "vxerrors.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtWidgets/QApplication>

namespace {

// The file's contents, to tell whether the editor changed it.
QByteArray digest(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&file);
    return hash.result();
}

QVariant callEditor(const QString &service, const char *method, const QVariantList &args)
{
    const QDBusMessage message = Vexil::busMethodCall(service, QStringLiteral("VXLEditor.VxlEditorIntf"), method, args);
    return Vexil::busReplyValue(QDBusConnection::sessionBus().call(message), QStringLiteral("Translation editor"));
}

} // namespace

TVexilRTSE::~TVexilRTSE()
{
    // Windows this component disabled come back with it.
    if (m_editing)
        ChangeEnable(true);
}

void TVexilRTSE::SetVXLEditor(const QString &)
{
    m_editor = QStringLiteral("VXLEditor.VxlEditorIntf");
}

void TVexilRTSE::afterLoaded()
{
    if (m_loadOnCreate && fileHasEntries(m_file))
        LoadAllFromFile(m_file, true);
}

QString TVexilRTSE::editorService() const
{
    // VEXIL_EDITOR_SERVICE names another editor instance (tests run private ones).
    const QString chosen = qEnvironmentVariable("VEXIL_EDITOR_SERVICE");
    return chosen.isEmpty() ? m_editor : chosen;
}

void TVexilRTSE::EditStrings(const QString &section, QChar delimiter)
{
    Q_UNUSED(delimiter)
    codeCall();
    const QString name = section.isEmpty() ? QStringLiteral("Captions") : section;
    const QString service = editorService();
    if (!QDBusConnection::sessionBus().isConnected() || !Vexil::busServiceAvailable(service))
        throw EVexilError(QStringLiteral("The translation editor \"%1\" is not available").arg(service));
    const QByteArray before = digest(m_file);
    callEditor(service, "EditFile", {m_file, name, true});

    m_editing = true;
    ChangeEnable(false);
    try {
        // The editor works in its own process; this one keeps painting and
        // answering while it waits.
        while (!callEditor(service, "EditingFinished", {}).toBool()) {
            QEventLoop pause;
            QTimer::singleShot(50, &pause, &QEventLoop::quit);
            pause.exec();
        }
    } catch (...) {
        m_editing = false;
        ChangeEnable(true);
        throw;
    }
    m_editing = false;
    ChangeEnable(true);
    // An edit given up leaves the file, and so the tables, as they were.
    if (digest(m_file) != before)
        LoadAllFromFile(m_file, true);
}

void TVexilRTSE::ChangeEnable(bool enable)
{
    if (!enable) {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            if (window->isEnabled() && !window->inherits("QMenu")) {
                window->setEnabled(false);
                m_disabled.append(window);
            }
        }
        return;
    }
    // Only what was disabled here is enabled again.
    for (const QPointer<QWidget> &window : std::as_const(m_disabled)) {
        if (window)
            window->setEnabled(true);
    }
    m_disabled.clear();
}
