#pragma once

#include "vexil_export.h"

#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtWidgets/QWidget>

class TvxLoadWatcher;

/// Remembers its form's position, size and window state between runs:
/// restores them when the form has been loaded and saves them when the form
/// is destroyed. Does nothing when inactive or in the designer.
///
/// The values ("State", "Top", "Left", "Height", "Width") live in the
/// application settings under SubKey. On Windows that is the registry key
/// SubKey below the root key; elsewhere the native settings of the
/// organisation and application named by SubKey's first parts (after a
/// leading "Software"), the rest of the path being the group. The current
/// user's root maps to the user scope, every other root to the system scope.
class VEXIL_EXPORT TvxFormStorage : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool Active READ Active WRITE SetMyActive)
    Q_PROPERTY(TMyHKeyType RegRootKey READ RegRootKey WRITE SetRegRootKey)
    Q_PROPERTY(QString SubKey READ SubKey WRITE SetSubKey)
public:
    enum TMyHKeyType {
        vxHKEY_CURRENT_USER,
        vxHKEY_CLASSES_ROOT,
        vxHKEY_LOCAL_MACHINE,
        vxHKEY_USERS,
        vxHKEY_CURRENT_CONFIG,
        vxHKEY_DYN_DATA
    };
    Q_ENUM(TMyHKeyType)

    /// Throws EVexilError when @p parent has no window to serve.
    explicit TvxFormStorage(QWidget *parent = nullptr);
    ~TvxFormStorage() override;

    bool Active() const { return m_active; }
    void SetMyActive(bool active) { m_active = active; }
    TMyHKeyType RegRootKey() const { return m_rootKey; }
    void SetRegRootKey(TMyHKeyType key);
    /// The predefined registry handle of the root key.
    quint32 RootKeyHandle() const { return m_rootHandle; }
    QString SubKey() const { return m_subKey; }
    void SetSubKey(const QString &subKey) { m_subKey = subKey; }

    /// The form whose placement is kept.
    QWidget *GetForm() const { return m_form; }

    /// Restores the placement; runs once when the form has been loaded.
    virtual void Loaded();
    /// Saves the placement; runs when the component is destroyed with its
    /// form. Throws EVexilError when the settings cannot be written (the
    /// destructor swallows it).
    void FormDestroing();

    bool isDesigning() const { return m_designing; }
    void setDesigning(bool on) { m_designing = on; }

    // Setters under the names form code generated from .ui files calls.
    void setActive(bool active) { SetMyActive(active); }
    void setRegRootKey(TMyHKeyType key) { SetRegRootKey(key); }
    void setSubKey(const QString &subKey) { SetSubKey(subKey); }

private:
    void restore();

    bool m_active = true;
    QString m_subKey;
    TMyHKeyType m_rootKey = vxHKEY_CURRENT_USER;
    quint32 m_rootHandle = 0x80000001;
    QPointer<QWidget> m_form;
    bool m_designing = false;
    TvxLoadWatcher *m_loadWatcher;
};
