#pragma once

#include "vexil_export.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>

class QWidget;
class TvxCustomLang;

/// Translates a dialog's labels and buttons each time the dialog is shown,
/// from the linked translation component's dialog texts.
///
/// A control belongs to a key when its English text is the key's text,
/// ignoring "&" accelerators, a trailing colon and letter case. The English
/// text is remembered on the control, so a later show in another language
/// finds it again. A key without a translation leaves the control as Qt
/// made it; without a linked component nothing is translated.
class VEXIL_EXPORT TvxDialogLink : public QObject
{
    Q_OBJECT
public:
    TvxDialogLink(QWidget *dialog, const QStringList &keys);

    TvxCustomLang *vexil() const;
    /// Links @p vexil; the link is cleared when that component is destroyed.
    void setVexil(TvxCustomLang *vexil);
    /// The linked component's object name (or the name still looked for).
    QString vexilName() const;
    /// Links the translation component of that object name: on the dialog's
    /// form first, else anywhere in the application. One not found yet is
    /// looked for again when the dialog is shown. An empty name unlinks.
    void setVexilName(const QString &name);
    const QStringList &keys() const { return m_keys; }

    /// Translates the dialog now.
    void translate();
    /// The text a key is matched with.
    static QString normalized(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *m_dialog;
    QStringList m_keys;
    void resolveName();

    QPointer<TvxCustomLang> m_vexil;
    QString m_vexilName;
};
