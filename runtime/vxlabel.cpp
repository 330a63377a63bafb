#include "vxlabel.h"

#include <QtGui/QPainter>

TvxLabel::TvxLabel(QWidget *parent)
    : TvxLabel(QString(), parent)
{
}

TvxLabel::TvxLabel(const QString &text, QWidget *parent)
    : QLabel(text, parent)
    , m_shadowColor(palette().color(QPalette::Dark))
    , m_threeDColor(palette().color(QPalette::Light))
{
}

void TvxLabel::setShadowColor(const QColor &color)
{
    if (color == m_shadowColor)
        return;
    m_shadowColor = color;
    update();
}

void TvxLabel::setThreeDColor(const QColor &color)
{
    if (color == m_threeDColor)
        return;
    m_threeDColor = color;
    update();
}

void TvxLabel::setShadowDepth(int depth)
{
    if (depth == m_shadowDepth)
        return;
    m_shadowDepth = depth;
    updateGeometry();
    update();
}

void TvxLabel::setWidthDepth(int depth)
{
    if (depth == m_widthDepth)
        return;
    m_widthDepth = depth;
    updateGeometry();
    update();
}

void TvxLabel::setShadowUp(bool up)
{
    if (up == m_shadowUp)
        return;
    m_shadowUp = up;
    update();
}

void TvxLabel::setThreeDLeft(bool left)
{
    if (left == m_threeDLeft)
        return;
    m_threeDLeft = left;
    update();
}

void TvxLabel::setTextStyle(TTextStyle style)
{
    if (style == m_textStyle)
        return;
    m_textStyle = style;
    update();
}

void TvxLabel::setShowAccelChar(bool show)
{
    if (show == m_showAccelChar)
        return;
    m_showAccelChar = show;
    update();
}

QSize TvxLabel::sizeHint() const
{
    const int extra = qMax(qAbs(m_shadowDepth), qAbs(m_widthDepth));
    return QLabel::sizeHint() + QSize(extra, 2 * extra);
}

QSize TvxLabel::minimumSizeHint() const
{
    const int extra = qMax(qAbs(m_shadowDepth), qAbs(m_widthDepth));
    return QLabel::minimumSizeHint() + QSize(extra, 2 * extra);
}

void TvxLabel::drawPasses(QPainter &painter, const QRect &rect, int flags)
{
    const QString caption = text();
    auto pass = [&](int dx, int dy, const QColor &color) {
        painter.setPen(color);
        painter.drawText(rect.translated(dx, dy), flags, caption);
    };
    const int d = m_shadowDepth;
    const int w = m_widthDepth;
    switch (m_textStyle) {
    case tsRaised:
    case tsRecessed: {
        const bool raised = m_textStyle == tsRaised;
        pass(d, m_shadowUp ? -d : d, raised ? m_shadowColor : m_threeDColor);
        pass(m_threeDLeft ? w : -w, w, raised ? m_threeDColor : m_shadowColor);
        break;
    }
    case tsShadow:
        // The shadow style reads ShadowUp the other way round from the
        // raised and recessed ones; labels out there rely on that.
        pass(d, m_shadowUp ? d : -d, m_shadowColor);
        break;
    case tsNone:
        break;
    }
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    pass(0, 0, palette().color(group, foregroundRole()));
}

void TvxLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect r = contentsRect();
    if (autoFillBackground())
        painter.fillRect(r, palette().color(backgroundRole()));
    int flags = int(alignment()) | Qt::TextExpandTabs;
    if (wordWrap())
        flags |= Qt::TextWordWrap;
    flags |= m_showAccelChar ? Qt::TextShowMnemonic : 0;
    painter.setFont(font());
    drawPasses(painter, r, flags);
}
