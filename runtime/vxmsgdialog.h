#pragma once

#include "vexil_export.h"
#include "vxdialogtypes.h"

#include <QtCore/QVariant>
#include <QtWidgets/QDialog>

class QLabel;

namespace Vexil {

/// @p format with its place markers (%1 ... %99, also written %L1) replaced
/// in one pass: the lowest-numbered marker takes the first value, the next
/// lowest the second, and so on. Text that a value brings in is never
/// scanned again; markers without a value stay as written.
VEXIL_EXPORT QString formatMessage(const QString &format, const QVariantList &args);

} // namespace Vexil

class QPushButton;

/// The message box the translation component builds: an icon ("Image"), the
/// message ("Message") and a row of buttons named after their English
/// captions without "&" ("Yes", "No To All" ...). Each button closes the
/// box with its modal result, except Help.
class VEXIL_EXPORT TMessageForm : public QDialog
{
    Q_OBJECT
public:
    explicit TMessageForm(QWidget *parent = nullptr);

    QLabel *image() const { return m_image; }
    QLabel *message() const { return m_message; }
    /// The buttons in the order shown.
    const QList<QPushButton *> &buttons() const { return m_buttons; }
    /// The button of @p button, or nullptr.
    QPushButton *button(TMsgDlgBtn button) const;

    QString helpFile() const { return m_helpFile; }
    void setHelpFile(const QString &file) { m_helpFile = file; }
    int helpContext() const { return m_helpContext; }
    void setHelpContext(int context) { m_helpContext = context; }

    /// Closes the box with the cancel button's result (Cancel, else No, else OK).
    void reject() override;

Q_SIGNALS:
    /// The Help button was pressed.
    void helpRequested(int context, const QString &file);

private:
    friend class TvxCustomLang;
    QLabel *m_image;
    QLabel *m_message;
    QList<QPushButton *> m_buttons;
    QHash<QPushButton *, TMsgDlgBtn> m_kinds;
    QHash<QPushButton *, int> m_results;
    int m_escapeResult = mrCancel;
    QString m_helpFile;
    int m_helpContext = 0;
};
