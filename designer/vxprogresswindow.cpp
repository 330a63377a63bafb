#include "vxprogresswindow.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

TvxProgressWindow::TvxProgressWindow(QWidget *parent)
    : QFrame(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmSplash"));
    setFrameShape(QFrame::Panel);
    setFrameShadow(QFrame::Raised);
    m_label = new QLabel(this);
    m_label->setAlignment(Qt::AlignCenter);
    QFont font = m_label->font();
    font.setBold(true);
    m_label->setFont(font);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 16, 24, 16);
    layout->addWidget(m_label);
}

void TvxProgressWindow::showText(const QString &text)
{
    if (text.isEmpty()) {
        hide();
        return;
    }
    m_label->setText(text);
    adjustSize();
    if (parentWidget())
        move(parentWidget()->window()->geometry().center() - rect().center());
    show();
    raise();
    // Painted now: the work that follows does not return to the event loop.
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

QString TvxProgressWindow::text() const
{
    return isVisible() ? m_label->text() : QString();
}
