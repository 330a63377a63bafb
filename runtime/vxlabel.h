#pragma once

#include "vexil_export.h"

#include <QtGui/QColor>
#include <QtWidgets/QLabel>

/// A label that paints its text raised, recessed or with a shadow.
///
/// Every look is a few passes of the whole text, each shifted and in its
/// own colour, then the text itself on top in the palette's text colour
/// (grey when disabled). Its text is translated like any other caption.
class VEXIL_EXPORT TvxLabel : public QLabel
{
    Q_OBJECT
    Q_PROPERTY(QColor ShadowColor READ ShadowColor WRITE setShadowColor)
    Q_PROPERTY(QColor ThreeDColor READ ThreeDColor WRITE setThreeDColor)
    Q_PROPERTY(int ShadowDepth READ ShadowDepth WRITE setShadowDepth)
    Q_PROPERTY(int WidthDepth READ WidthDepth WRITE setWidthDepth)
    Q_PROPERTY(bool ShadowUp READ ShadowUp WRITE setShadowUp)
    Q_PROPERTY(bool ThreeDLeft READ ThreeDLeft WRITE setThreeDLeft)
    Q_PROPERTY(TTextStyle TextStyle READ TextStyle WRITE setTextStyle)
    Q_PROPERTY(bool ShowAccelChar READ ShowAccelChar WRITE setShowAccelChar)
public:
    enum TTextStyle { tsNone, tsRaised, tsRecessed, tsShadow };
    Q_ENUM(TTextStyle)

    explicit TvxLabel(QWidget *parent = nullptr);
    explicit TvxLabel(const QString &text, QWidget *parent = nullptr);

    /// Colour of the shadow pass; the palette's button-shadow colour at first.
    QColor ShadowColor() const { return m_shadowColor; }
    void setShadowColor(const QColor &color);
    /// Colour of the highlight pass; the palette's button-highlight colour at first.
    QColor ThreeDColor() const { return m_threeDColor; }
    void setThreeDColor(const QColor &color);
    /// Offset of the shadow pass in pixels (2).
    int ShadowDepth() const { return m_shadowDepth; }
    void setShadowDepth(int depth);
    /// Offset of the highlight pass in pixels (-1).
    int WidthDepth() const { return m_widthDepth; }
    void setWidthDepth(int depth);
    /// Direction of the shadow pass.
    bool ShadowUp() const { return m_shadowUp; }
    void setShadowUp(bool up);
    /// Direction of the highlight pass.
    bool ThreeDLeft() const { return m_threeDLeft; }
    void setThreeDLeft(bool left);
    /// The look painted (tsRecessed).
    TTextStyle TextStyle() const { return m_textStyle; }
    void setTextStyle(TTextStyle style);
    /// Whether "&" marks an accelerator (true) or is shown as it is.
    bool ShowAccelChar() const { return m_showAccelChar; }
    void setShowAccelChar(bool show);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawPasses(QPainter &painter, const QRect &rect, int flags);

    QColor m_shadowColor;
    QColor m_threeDColor;
    int m_shadowDepth = 2;
    int m_widthDepth = -1;
    bool m_shadowUp = false;
    bool m_threeDLeft = false;
    TTextStyle m_textStyle = tsRecessed;
    bool m_showAccelChar = true;
};
