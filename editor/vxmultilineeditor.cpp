#include "vxmultilineeditor.h"

#include "vxstringlist.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

int lineCount(const QPlainTextEdit *memo)
{
    // An empty memo has no lines; a final line break opens none either.
    const QString text = memo->toPlainText();
    if (text.isEmpty())
        return 0;
    return int(text.count(QLatin1Char('\n'))) + (text.endsWith(QLatin1Char('\n')) ? 0 : 1);
}

} // namespace

bool ShowMultilineEditor(const QString &value, const QString &propName, TMemoReturnText mode, QString &result,
                         QWidget *parent)
{
    QDialog form(parent);
    form.setObjectName(QStringLiteral("MultilineEditor"));
    form.setWindowTitle(QStringLiteral("Input new value for ") + propName + QStringLiteral(" property."));

    auto *top = new QWidget(&form);
    top->setObjectName(QStringLiteral("TopPanel"));
    top->setFixedHeight(18);
    auto *count = new QLabel(top);
    count->setObjectName(QStringLiteral("LinesLabel"));
    count->move(2, 2);

    auto *memo = new QPlainTextEdit(&form);
    memo->setObjectName(QStringLiteral("Memo"));
    memo->setLineWrapMode(QPlainTextEdit::NoWrap);
    memo->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    memo->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    memo->setPlainText(mode == mrtCommaText ? TvxStringList::fromCommaText(value).join(QLatin1Char('\n')) : value);

    auto *bottom = new QWidget(&form);
    bottom->setObjectName(QStringLiteral("BottomPanel"));
    bottom->setFixedHeight(30);
    auto *ok = new QPushButton(QStringLiteral("&OK"), bottom);
    ok->setObjectName(QStringLiteral("OKButton"));
    ok->setGeometry(6, 4, 75, 25);
    ok->setDefault(true);
    ok->setAutoDefault(false);
    auto *cancel = new QPushButton(QStringLiteral("&Cancel"), bottom);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setGeometry(86, 4, 75, 25);
    cancel->setAutoDefault(false);
    QObject::connect(ok, &QPushButton::clicked, &form, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, &form, &QDialog::reject);

    auto *layout = new QVBoxLayout(&form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(top);
    layout->addWidget(memo, 1);
    layout->addWidget(bottom);

    const auto updateCount = [count, memo] {
        count->setText(QStringLiteral("%1 lines").arg(lineCount(memo)));
        count->adjustSize();
    };
    QObject::connect(memo, &QPlainTextEdit::textChanged, &form, updateCount);
    updateCount();

    // Twice the caption's width, centred on the screen.
    const int width = std::max(2 * form.fontMetrics().horizontalAdvance(form.windowTitle()), 200);
    form.resize(width, 300);
    if (QScreen *screen = parent ? parent->screen() : QGuiApplication::primaryScreen())
        form.move(screen->availableGeometry().center() - form.rect().center());
    memo->setFocus();

    if (form.exec() != QDialog::Accepted)
        return false;
    if (mode == mrtCommaText) {
        QStringList lines = memo->toPlainText().split(QLatin1Char('\n'));
        if (lines.size() == 1 && lines.first().isEmpty())
            lines.clear();
        else if (!lines.isEmpty() && lines.last().isEmpty())
            lines.removeLast(); // a closing line break starts no item
        result = TvxStringList::toCommaText(lines);
    } else {
        result = memo->toPlainText();
    }
    return true;
}
