#include "vxfileeditorservice.h"

#include "vxfileeditorwindow.h"

#include <QtCore/QFileInfo>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>

#include <exception>

namespace {
const QString FileError = QStringLiteral("VXLEditor.VxlEditorIntf.Error.FileError");
const QString Busy = QStringLiteral("VXLEditor.VxlEditorIntf.Error.Busy");
} // namespace

TvxFileEditorService::TvxFileEditorService(TfrmFileEditor *window, QObject *parent)
    : QObject(parent), m_window(window)
{
    connect(window, &TfrmFileEditor::fileClosed, this, [this] { m_editing = false; });
}

bool TvxFileEditorService::exportOn(const QDBusConnection &connection)
{
    QDBusConnection bus(connection);
    return bus.registerObject(QStringLiteral("/"), this, QDBusConnection::ExportScriptableSlots);
}

void TvxFileEditorService::refuse(const QString &name, const QString &message)
{
    m_lastError = message;
    if (calledFromDBus())
        sendErrorReply(name, message);
}

void TvxFileEditorService::EditFile(const QString &file, const QString &section, bool singleSection)
{
    m_lastError.clear();
    try {
        if (!m_window)
            return refuse(QDBusError::errorString(QDBusError::Failed), QStringLiteral("The editor window is gone."));
        const QString category = section.isEmpty() ? QStringLiteral("Captions") : section;
        const int kind = TvxTranslationFileInfo::categoryOf(category);
        if (kind < 0)
            return refuse(QDBusError::errorString(QDBusError::InvalidArgs),
                          QStringLiteral("\"%1\" is not a category of translation files.").arg(category));
        if (file.isEmpty())
            return refuse(QDBusError::errorString(QDBusError::InvalidArgs), QStringLiteral("No file was named."));
        const QString path = QFileInfo(file).absoluteFilePath();
        if (m_editing && m_window->hasFile() && m_window->fileName() != path)
            return refuse(Busy, QStringLiteral("The editor is still editing \"%1\".").arg(m_window->fileName()));
        if (m_window->hasPendingChanges())
            return refuse(Busy, QStringLiteral("The editor holds changes to \"%1\" that are not applied yet.")
                                    .arg(m_window->fileName()));
        QString error;
        if (!m_window->openFile(path, &error))
            return refuse(FileError, error);
        m_window->selectCategory(TStringsType(kind));
        m_window->setCategoryLocked(singleSection);
        m_window->setCloseAfterEdit(true);
        m_editing = true;
        m_window->show();
        m_window->raise();
        m_window->activateWindow();
    } catch (const std::exception &e) {
        refuse(QDBusError::errorString(QDBusError::Failed), QString::fromLocal8Bit(e.what()));
    } catch (...) {
        refuse(QDBusError::errorString(QDBusError::Failed), QStringLiteral("The editor failed to open the file."));
    }
}

bool TvxFileEditorService::EditingFinished()
{
    return !m_editing;
}
