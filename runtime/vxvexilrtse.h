#pragma once

#include "vxcomp.h"

#include <QtCore/QPointer>

/// A translation component whose translations live in a file that an
/// external editor program edits: EditStrings() hands the file over on the
/// session bus and waits, with the application's windows disabled, until
/// the editor is done, then loads the edited file.
class VEXIL_EXPORT TVexilRTSE : public TVexil
{
    Q_OBJECT
    Q_PROPERTY(QString VXLFile READ VXLFile WRITE SetVXLFile)
    Q_PROPERTY(QString VXLEditor READ VXLEditor WRITE SetVXLEditor)
    Q_PROPERTY(bool LoadOnCreate READ LoadOnCreate WRITE setLoadOnCreate)
public:
    explicit TVexilRTSE(QObject *owner = nullptr) : TVexil(owner) {}
    explicit TVexilRTSE(QWidget *parent) : TVexil(parent) {}
    ~TVexilRTSE() override;

    QString VXLFile() const { return m_file; }
    void SetVXLFile(const QString &file) { m_file = file; }
    /// The editor's name on the session bus: always "VXLEditor.VxlEditorIntf".
    QString VXLEditor() const { return m_editor; }
    /// Ignores @p name: the editor's name is fixed.
    void SetVXLEditor(const QString &name);
    bool LoadOnCreate() const { return m_loadOnCreate; }
    void setLoadOnCreate(bool on) { m_loadOnCreate = on; }
    // The name form files store.
    void setVXLFile(const QString &file) { SetVXLFile(file); }
    void setVXLEditor(const QString &name) { SetVXLEditor(name); }

    /// Has the external editor edit category @p section ("Captions" when
    /// empty) of VXLFile() and waits until it is done; then the edited file
    /// replaces the tables and the language is applied again. Throws
    /// EVexilError, before any window is disabled, when no editor can be
    /// reached. @p delimiter is kept for callers; the file names its own.
    void EditStrings(const QString &section, QChar delimiter);
    /// Enables or disables every window of the application.
    void ChangeEnable(bool enable);

protected:
    void afterLoaded() override;

private:
    QString editorService() const;

    QString m_file;
    QString m_editor = QStringLiteral("VXLEditor.VxlEditorIntf");
    bool m_loadOnCreate = false;
    bool m_editing = false; // the editor object is held
    QList<QPointer<QWidget>> m_disabled;
};
