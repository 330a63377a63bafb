#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtDBus/QDBusContext>

class QDBusConnection;
class TfrmFileEditor;

/// The file editor's object on the session bus (path "/", interface
/// "VXLEditor.VxlEditorIntf"): a translation component hands its file over
/// with EditFile and polls EditingFinished until the user is done. Refused
/// calls get error replies; nothing throws out of a slot.
class TvxFileEditorService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "VXLEditor.VxlEditorIntf")

public:
    static QString interfaceName() { return QStringLiteral("VXLEditor.VxlEditorIntf"); }

    explicit TvxFileEditorService(TfrmFileEditor *window, QObject *parent = nullptr);

    /// Registers the object at "/" of @p connection (its scriptable slots).
    bool exportOn(const QDBusConnection &connection);

    /// The message of the last refused call, for callers outside the bus.
    QString lastError() const { return m_lastError; }

public Q_SLOTS:
    /// Opens @p file in the window on category @p section ("Captions" when
    /// empty) and returns at once; the user picks the form and edits. With
    /// @p singleSection only that category can be edited. Refused when the
    /// file cannot be read, the category is unknown, or an edit of another
    /// file is still open.
    Q_SCRIPTABLE void EditFile(const QString &file, const QString &section, bool singleSection);
    /// False while an edit started by EditFile is open; true once the user
    /// has finished it (applied and saved, cancelled, or closed the file),
    /// and when none was started.
    Q_SCRIPTABLE bool EditingFinished();

private:
    void refuse(const QString &name, const QString &message);

    QPointer<TfrmFileEditor> m_window;
    bool m_editing = false;
    QString m_lastError;
};
