#include "vxdialoglink.h"

#include "vxcomp.h"
#include "vxfindnamed.h"

#include <QtCore/QEvent>
#include <QtCore/QHash>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>

namespace {

const char englishProperty[] = "vxEnglishText";

QString textOf(const QWidget *w)
{
    if (auto *label = qobject_cast<const QLabel *>(w))
        return label->text();
    if (auto *button = qobject_cast<const QAbstractButton *>(w))
        return button->text();
    if (auto *box = qobject_cast<const QGroupBox *>(w))
        return box->title();
    return QString();
}

void setTextOf(QWidget *w, const QString &text)
{
    if (auto *label = qobject_cast<QLabel *>(w))
        label->setText(text);
    else if (auto *button = qobject_cast<QAbstractButton *>(w))
        button->setText(text);
    else if (auto *box = qobject_cast<QGroupBox *>(w))
        box->setTitle(text);
}

} // namespace

TvxDialogLink::TvxDialogLink(QWidget *dialog, const QStringList &keys)
    : QObject(dialog)
    , m_dialog(dialog)
    , m_keys(keys)
{
    dialog->installEventFilter(this);
}

TvxCustomLang *TvxDialogLink::vexil() const
{
    return m_vexil;
}

void TvxDialogLink::setVexil(TvxCustomLang *vexil)
{
    m_vexil = vexil;
    m_vexilName.clear();
}

QString TvxDialogLink::vexilName() const
{
    return m_vexil ? m_vexil->objectName() : m_vexilName;
}

void TvxDialogLink::setVexilName(const QString &name)
{
    m_vexil = nullptr;
    m_vexilName = name;
    resolveName();
}

void TvxDialogLink::resolveName()
{
    if (m_vexil || m_vexilName.isEmpty())
        return;
    // Usually the component of the form the dialog was placed on.
    QWidget *parent = m_dialog->parentWidget();
    m_vexil = Vexil::findNamed<TvxCustomLang>(parent ? parent->window() : nullptr, m_vexilName);
}

QString TvxDialogLink::normalized(const QString &text)
{
    QString s = text;
    s.remove(QLatin1Char('&'));
    s = s.trimmed();
    if (s.endsWith(QLatin1Char(':')))
        s.chop(1);
    return s.trimmed().toCaseFolded();
}

bool TvxDialogLink::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_dialog && event->type() == QEvent::Show)
        translate();
    return QObject::eventFilter(watched, event);
}

void TvxDialogLink::translate()
{
    resolveName();
    if (!m_vexil)
        return;
    QHash<QString, QString> translations;
    for (const QString &key : std::as_const(m_keys)) {
        const QString text = m_vexil->GetTextFrom(m_vexil->DlgsCaptions(), key, true);
        if (!text.isEmpty())
            translations.insert(normalized(key), text);
    }
    if (translations.isEmpty())
        return;

    // File dialogs keep their own label texts and reset their buttons from
    // them, so those go through the dialog's API.
    if (auto *files = qobject_cast<QFileDialog *>(m_dialog)) {
        const QList<QPair<QFileDialog::DialogLabel, QStringList>> labels = {
            {QFileDialog::LookIn, {QStringLiteral("Look in:"), QStringLiteral("Save in:")}},
            {QFileDialog::FileName, {QStringLiteral("File name:")}},
            {QFileDialog::FileType, {QStringLiteral("Files of type:"), QStringLiteral("Save as type:"), QStringLiteral("File type:")}},
            {QFileDialog::Accept, {files->acceptMode() == QFileDialog::AcceptSave ? QStringLiteral("Save") : QStringLiteral("Open")}},
            {QFileDialog::Reject, {QStringLiteral("Cancel")}}};
        for (const auto &label : labels) {
            for (const QString &key : label.second) {
                const QString text = translations.value(normalized(key));
                if (m_keys.contains(key) && !text.isEmpty()) {
                    files->setLabelText(label.first, text);
                    break;
                }
            }
        }
    }

    const QList<QWidget *> controls = m_dialog->findChildren<QWidget *>();
    for (QWidget *control : controls) {
        QVariant english = control->property(englishProperty);
        if (!english.isValid()) {
            const QString text = textOf(control);
            if (text.isEmpty())
                continue;
            english = text;
        }
        const QString translation = translations.value(normalized(english.toString()));
        if (translation.isEmpty())
            continue;
        control->setProperty(englishProperty, english);
        if (textOf(control) != translation)
            setTextOf(control, translation);
    }
}
