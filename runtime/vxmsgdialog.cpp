// The translation component's message and input boxes, and the message
// form they are built on.
#include "vxmsgdialog.h"

#include "vxcomp.h"

#include <QtCore/QPointer>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

#include <algorithm>
#include <vector>

namespace {

struct ButtonInfo
{
    TMsgDlgBtn button;
    const char *english;
    TModalResult result;
};

const ButtonInfo buttonInfos[] = {
    {mbYes, "&Yes", mrYes},         {mbNo, "&No", mrNo},           {mbOK, "OK", mrOk},
    {mbCancel, "Cancel", mrCancel}, {mbAbort, "&Abort", mrAbort},  {mbRetry, "&Retry", mrRetry},
    {mbIgnore, "&Ignore", mrIgnore}, {mbAll, "&All", mrAll},       {mbNoToAll, "N&o To All", mrNoToAll},
    {mbYesToAll, "Y&es To All", mrYesToAll}, {mbHelp, "&Help", mrNone}};

const char *const titleKeys[] = {"Warning", "Error", "Information", "Confirm"};

// Dialog units: a horizontal unit is a quarter of the font's average
// character width, a vertical unit an eighth of its height.
struct DialogUnits
{
    explicit DialogUnits(const QFontMetrics &fm)
        : charWidth((fm.horizontalAdvance(QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz")) / 26 + 1) / 2)
        , charHeight(fm.height())
    {
    }
    int h(int n) const { return (n * charWidth + 2) / 4; }
    int v(int n) const { return (n * charHeight + 4) / 8; }
    int charWidth;
    int charHeight;
};

QWidget *dialogParent(const QObject *owner)
{
    if (owner && owner->isWidgetType())
        return static_cast<QWidget *>(const_cast<QObject *>(owner));
    return QApplication::activeWindow();
}

// A button wide enough for its caption, never narrower than the standard width.
int buttonWidth(const QFontMetrics &fm, const DialogUnits &du, const QString &caption)
{
    QString plain = caption;
    plain.remove(QLatin1Char('&'));
    return qMax(du.h(50), fm.horizontalAdvance(plain) + du.h(16));
}

int screenHalfWidth(const QWidget *w)
{
    const QScreen *screen = w && w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    return screen ? qMax(screen->availableGeometry().width() / 2, 200) : 320;
}

// Shows a box modally and frees it. Freeing the owner window while the box
// is up frees the box (and usually the translation component) with it:
// exec() then returns at once, and the box counts as cancelled. Nothing
// that may have gone with the owner is touched after exec().
int execAndFree(QDialog *dialog, int x, int y, int cancelled)
{
    if (x >= 0 && y >= 0)
        dialog->move(x, y);
    QPointer<QDialog> guard(dialog);
    const int result = dialog->exec();
    if (!guard)
        return cancelled;
    delete dialog;
    return result;
}

// A place marker at @p i: "%" with an optional "L" and one or two digits.
// Returns its number and sets @p length, or -1.
int markerAt(const QString &text, int i, int &length)
{
    if (text.at(i) != QLatin1Char('%'))
        return -1;
    int j = i + 1;
    if (j < text.size() && text.at(j) == QLatin1Char('L'))
        ++j;
    int number = -1;
    for (int k = 0; k < 2 && j < text.size() && text.at(j).isDigit() && text.at(j).unicode() < 128; ++k, ++j)
        number = (number < 0 ? 0 : number * 10) + text.at(j).digitValue();
    length = j - i;
    return number;
}

} // namespace

QString Vexil::formatMessage(const QString &format, const QVariantList &args)
{
    std::vector<int> numbers;
    int length = 0;
    for (int i = 0; i < format.size(); ++i) {
        const int n = markerAt(format, i, length);
        if (n >= 0) {
            numbers.push_back(n);
            i += length - 1;
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());

    QString out;
    out.reserve(format.size());
    for (int i = 0; i < format.size(); ++i) {
        const int n = markerAt(format, i, length);
        if (n < 0) {
            out += format.at(i);
            continue;
        }
        const auto rank = std::lower_bound(numbers.begin(), numbers.end(), n) - numbers.begin();
        out += rank < args.size() ? args.at(rank).toString() : format.mid(i, length);
        i += length - 1;
    }
    return out;
}

TMessageForm::TMessageForm(QWidget *parent)
    : QDialog(parent)
    , m_image(new QLabel(this))
    , m_message(new QLabel(this))
{
    setObjectName(QStringLiteral("MessageForm"));
    m_image->setObjectName(QStringLiteral("Image"));
    m_message->setObjectName(QStringLiteral("Message"));
    m_message->setWordWrap(true);
    m_message->setTextFormat(Qt::PlainText);
    m_message->setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void TMessageForm::reject()
{
    done(m_escapeResult); // Escape and the close box answer like the cancel button
}

QPushButton *TMessageForm::button(TMsgDlgBtn which) const
{
    for (auto it = m_kinds.cbegin(); it != m_kinds.cend(); ++it) {
        if (it.value() == which)
            return it.key();
    }
    return nullptr;
}

QString TvxCustomLang::DialogText(const QString &key, const QString &english) const
{
    const QString text = GetTextFrom(DlgsCaptions(), key, true);
    return text.isEmpty() ? english : text;
}

TMessageForm *TvxCustomLang::CreateMessageDialog(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons) const
{
    auto *form = new TMessageForm(dialogParent(m_owner));
    const QFontMetrics fm(form->font());
    const DialogUnits du(fm);
    const int hMargin = du.h(8), vMargin = du.v(8), hSpacing = du.h(10), vSpacing = du.v(10);
    const int buttonHeight = du.v(14), buttonSpacing = du.h(4);

    const QRect textRect = fm.boundingRect(QRect(0, 0, screenHalfWidth(form), 0),
                                           Qt::TextWordWrap | Qt::TextExpandTabs, msg);
    if (type == mtCustom) {
        const QString title = QGuiApplication::applicationDisplayName();
        form->setWindowTitle(title);
    } else {
        const QString key = QLatin1String(titleKeys[type]);
        form->setWindowTitle(DialogText(key, key));
    }

    QStyle::StandardPixmap icons[] = {QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical,
                                      QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxQuestion};
    const bool hasIcon = type != mtCustom;
    if (hasIcon)
        form->m_image->setPixmap(form->style()->standardIcon(icons[type], nullptr, form).pixmap(32, 32));
    form->m_image->setVisible(hasIcon);
    form->m_message->setText(msg);

    // Buttons: captions from the table, the default one and the one Escape presses.
    int groupWidth = 0;
    QPushButton *defaultButton = nullptr;
    QPushButton *cancelButton = nullptr;
    const TMsgDlgBtn defaultKind = buttons & mbOK ? mbOK : (buttons & mbYes ? mbYes : TMsgDlgBtn(0));
    const TMsgDlgBtn cancelKind = buttons & mbCancel ? mbCancel : (buttons & mbNo ? mbNo : mbOK);
    for (const ButtonInfo &info : buttonInfos) {
        if (!(buttons & info.button))
            continue;
        const QString english = QLatin1String(info.english);
        const QString key = Vexil::dialogKey(english);
        auto *button = new QPushButton(DialogText(key, english), form);
        button->setObjectName(key);
        button->setAutoDefault(false);
        button->resize(buttonWidth(fm, du, button->text()), buttonHeight);
        groupWidth += button->width();
        form->m_buttons.append(button);
        form->m_kinds.insert(button, info.button);
        form->m_results.insert(button, info.result);
        const int result = info.result;
        if (info.button == mbHelp) {
            QObject::connect(button, &QPushButton::clicked, form,
                             [form] { Q_EMIT form->helpRequested(form->helpContext(), form->helpFile()); });
        } else {
            QObject::connect(button, &QPushButton::clicked, form, [form, result] { form->done(result); });
        }
        if (!defaultButton && (info.button == defaultKind || defaultKind == 0))
            defaultButton = button;
        if (info.button == cancelKind)
            cancelButton = button;
    }
    if (!form->m_buttons.isEmpty())
        groupWidth += buttonSpacing * (int(form->m_buttons.size()) - 1);
    if (defaultButton) {
        defaultButton->setDefault(true);
        defaultButton->setFocus();
    }
    if (cancelButton)
        form->m_escapeResult = form->m_results.value(cancelButton, mrCancel);

    // Place icon, text and buttons and size the form around them.
    const int iconWidth = hasIcon ? 32 + hSpacing : 0;
    const int iconTextWidth = textRect.width() + iconWidth;
    const int iconTextHeight = hasIcon ? qMax(32, textRect.height()) : textRect.height();
    const int clientWidth = qMax(iconTextWidth, groupWidth) + 2 * hMargin;
    const int clientHeight = iconTextHeight + buttonHeight + vSpacing + 2 * vMargin;
    form->m_image->setGeometry(hMargin, vMargin, 32, 32);
    form->m_message->setGeometry(hMargin + iconWidth, vMargin, textRect.width() + 1, textRect.height());
    int x = (clientWidth - groupWidth) / 2;
    for (QPushButton *button : std::as_const(form->m_buttons)) {
        button->move(x, iconTextHeight + vMargin + vSpacing);
        x += button->width() + buttonSpacing;
    }
    form->setFixedSize(clientWidth, clientHeight);
    return form;
}

int TvxCustomLang::MessageDlgPosHelp(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx,
                                     int x, int y, const QString &helpFile) const
{
    TMessageForm *form = CreateMessageDialog(msg, type, buttons);
    form->setHelpContext(helpCtx);
    form->setHelpFile(helpFile);
    return execAndFree(form, x, y, form->m_escapeResult);
}

int TvxCustomLang::MessageDlg(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx) const
{
    return MessageDlgPosHelp(msg, type, buttons, helpCtx, -1, -1, QString());
}

int TvxCustomLang::MessageDlgPos(const QString &msg, TMsgDlgType type, TMsgDlgButtons buttons, int helpCtx, int x,
                                 int y) const
{
    return MessageDlgPosHelp(msg, type, buttons, helpCtx, x, y, QString());
}

void TvxCustomLang::ShowMessagePos(const QString &msg, int x, int y) const
{
    MessageDlgPos(msg, mtCustom, mbOK, 0, x, y);
}

void TvxCustomLang::ShowMessage(const QString &msg) const
{
    ShowMessagePos(msg, -1, -1);
}

void TvxCustomLang::ShowMessageFmt(const QString &format, const QVariantList &args) const
{
    ShowMessage(Vexil::formatMessage(format, args));
}

bool TvxCustomLang::InputQuery(const QString &caption, const QString &prompt, QString &value) const
{
    auto *form = new QDialog(dialogParent(m_owner));
    form->setObjectName(QStringLiteral("InputQueryForm"));
    form->setWindowTitle(caption);
    const QFontMetrics fm(form->font());
    const DialogUnits du(fm);

    auto *label = new QLabel(prompt, form);
    label->setObjectName(QStringLiteral("Prompt"));
    label->setWordWrap(true);
    const int width = du.h(164);
    const int promptHeight = fm.boundingRect(QRect(0, 0, width, 0), Qt::TextWordWrap, prompt).height();
    label->setGeometry(du.h(8), du.v(8), width, promptHeight);
    auto *edit = new QLineEdit(value, form);
    edit->setObjectName(QStringLiteral("Edit"));
    edit->setGeometry(du.h(8), label->geometry().bottom() + du.v(5), width, edit->sizeHint().height());
    edit->selectAll();

    auto *ok = new QPushButton(DialogText(QStringLiteral("OK"), QStringLiteral("OK")), form);
    ok->setObjectName(QStringLiteral("OK"));
    auto *cancel = new QPushButton(DialogText(QStringLiteral("Cancel"), QStringLiteral("Cancel")), form);
    cancel->setObjectName(QStringLiteral("Cancel"));
    const int bw = qMax(buttonWidth(fm, du, ok->text()), buttonWidth(fm, du, cancel->text()));
    const int by = edit->geometry().bottom() + du.v(15);
    const int clientWidth = qMax(du.h(180), 2 * bw + du.h(4) + 2 * du.h(8));
    cancel->setGeometry(clientWidth - du.h(8) - bw, by, bw, du.v(14));
    ok->setGeometry(cancel->x() - du.h(4) - bw, by, bw, du.v(14));
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, form, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, form, &QDialog::reject);
    form->setFixedSize(clientWidth, by + du.v(14) + du.v(8));
    edit->setFocus();

    // The edit's text is taken before the box is freed; a box freed with
    // its owner counts as cancelled.
    QString edited;
    QObject::connect(form, &QDialog::accepted, form, [edit, &edited] { edited = edit->text(); });
    if (execAndFree(form, -1, -1, QDialog::Rejected) != QDialog::Accepted)
        return false;
    value = edited;
    return true;
}

QString TvxCustomLang::InputBox(const QString &caption, const QString &prompt, const QString &def) const
{
    QString value = def;
    InputQuery(caption, prompt, value);
    return value;
}
