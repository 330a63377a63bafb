// The three-dimensional label, checked on real pixels: where each pass
// lands, in which colour, and when the label repaints.
#include "vxlabel.h"

#include <QtTest>

namespace {

const QColor shadow(0, 0, 255);
const QColor highlight(255, 0, 0);
const QColor front(0, 0, 0);
const QColor grey(0, 160, 0);

class CountingLabel : public TvxLabel
{
public:
    using TvxLabel::TvxLabel;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *e) override
    {
        ++paints;
        TvxLabel::paintEvent(e);
    }
};

void setUp(TvxLabel &label, const QString &text)
{
    QFont font(QStringLiteral("DejaVu Sans"), 28, QFont::Bold);
    font.setStyleStrategy(QFont::NoAntialias);
    label.setFont(font);
    label.setText(text);
    QPalette p = label.palette();
    p.setColor(QPalette::Window, Qt::white);
    p.setColor(QPalette::WindowText, front);
    p.setColor(QPalette::Disabled, QPalette::WindowText, grey);
    label.setPalette(p);
    label.setAutoFillBackground(true);
    label.setShadowColor(shadow);
    label.setThreeDColor(highlight);
    label.setAlignment(Qt::AlignCenter);
    label.resize(160, 80);
}

// The bounding box of the pixels of one colour.
QRect boxOf(const QImage &image, const QColor &color)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) == color)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

QImage render(TvxLabel &label)
{
    return label.grab().toImage().convertToFormat(QImage::Format_RGB32);
}

} // namespace

class TstLabel : public QObject
{
    Q_OBJECT
private slots:
    void defaults();
    void passOffsets_data();
    void passOffsets();
    void disabledGreysOnlyTheFront();
    void accelerators();
    void repaintsOnlyOnChange();
};

void TstLabel::defaults()
{
    TvxLabel label;
    QCOMPARE(label.TextStyle(), TvxLabel::tsRecessed);
    QCOMPARE(label.ShadowDepth(), 2);
    QCOMPARE(label.WidthDepth(), -1);
    QVERIFY(!label.ShadowUp());
    QVERIFY(!label.ThreeDLeft());
    QCOMPARE(label.ShadowColor(), label.palette().color(QPalette::Dark));
    QCOMPARE(label.ThreeDColor(), label.palette().color(QPalette::Light));
}

void TstLabel::passOffsets_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<bool>("shadowUp");
    QTest::addColumn<bool>("threeDLeft");
    QTest::addColumn<QPoint>("shadowShift");    // bottom-right (or top-right) corner shift of the blue pass
    QTest::addColumn<QPoint>("highlightShift"); // top-right corner shift of the red pass
    QTest::newRow("raised") << int(TvxLabel::tsRaised) << false << false << QPoint(2, 2) << QPoint(1, -1);
    QTest::newRow("raised, shadow up") << int(TvxLabel::tsRaised) << true << false << QPoint(2, -2) << QPoint(1, -1);
    QTest::newRow("raised, highlight left") << int(TvxLabel::tsRaised) << false << true << QPoint(2, 2) << QPoint(-1, -1);
    QTest::newRow("recessed") << int(TvxLabel::tsRecessed) << false << false << QPoint(1, -1) << QPoint(2, 2);
    QTest::newRow("shadow") << int(TvxLabel::tsShadow) << false << false << QPoint(2, -2) << QPoint();
    QTest::newRow("shadow, up") << int(TvxLabel::tsShadow) << true << false << QPoint(2, 2) << QPoint();
}

void TstLabel::passOffsets()
{
    QFETCH(int, style);
    QFETCH(bool, shadowUp);
    QFETCH(bool, threeDLeft);
    QFETCH(QPoint, shadowShift);
    QFETCH(QPoint, highlightShift);
    TvxLabel label;
    setUp(label, QStringLiteral("IH"));
    label.setTextStyle(TvxLabel::TTextStyle(style));
    label.setShadowUp(shadowUp);
    label.setThreeDLeft(threeDLeft);
    const QImage image = render(label);
    const QRect text = boxOf(image, front);
    QVERIFY(!text.isEmpty());
    // Each pass is the text shifted; its outer corner in the shift's
    // direction is never covered by a later pass.
    auto corner = [](const QRect &r, const QPoint &shift) {
        return QPoint(shift.x() >= 0 ? r.right() : r.left(), shift.y() >= 0 ? r.bottom() : r.top());
    };
    // In the recessed look the blue pass is the second one (its colour is
    // the shadow colour), the red the first.
    const QRect blue = boxOf(image, shadow);
    QCOMPARE(corner(blue, shadowShift), corner(text, shadowShift) + shadowShift);
    const QRect red = boxOf(image, highlight);
    if (highlightShift.isNull())
        QVERIFY(red.isEmpty());
    else
        QCOMPARE(corner(red, highlightShift), corner(text, highlightShift) + highlightShift);
}

void TstLabel::disabledGreysOnlyTheFront()
{
    TvxLabel label;
    setUp(label, QStringLiteral("IH"));
    label.setTextStyle(TvxLabel::tsRaised);
    label.setEnabled(false);
    const QImage image = render(label);
    QVERIFY(boxOf(image, front).isEmpty());
    QVERIFY(!boxOf(image, grey).isEmpty());
    QVERIFY(!boxOf(image, shadow).isEmpty());
    QVERIFY(!boxOf(image, highlight).isEmpty());
}

void TstLabel::accelerators()
{
    TvxLabel label;
    setUp(label, QStringLiteral("&H"));
    label.setTextStyle(TvxLabel::tsNone);
    label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const int accelWidth = boxOf(render(label), front).width();
    label.setShowAccelChar(false);
    const QImage literal = render(label);
    QVERIFY(boxOf(literal, front).width() > accelWidth + 10); // the "&" is drawn now
    label.setTextStyle(TvxLabel::tsShadow);
    QVERIFY(boxOf(render(label), shadow).width() > accelWidth + 10); // in every pass

    label.setWordWrap(true);
    label.setText(QStringLiteral("word wrap here"));
    label.resize(80, 200);
    const QRect wrapped = boxOf(render(label), front);
    QVERIFY(wrapped.height() > 60); // more than one line
}

void TstLabel::repaintsOnlyOnChange()
{
    CountingLabel label;
    setUp(label, QStringLiteral("Hi"));
    label.show();
    QVERIFY(QTest::qWaitForWindowExposed(&label));
    QCoreApplication::processEvents();
    const int before = label.paints;
    label.setShadowDepth(2);
    label.setWidthDepth(-1);
    label.setTextStyle(TvxLabel::tsRecessed);
    label.setShadowColor(shadow);
    label.setShadowUp(false);
    QCoreApplication::processEvents();
    QCOMPARE(label.paints, before);
    label.setShadowColor(Qt::yellow);
    QTRY_VERIFY(label.paints > before);
}

QTEST_MAIN(TstLabel)
#include "tst_label.moc"
