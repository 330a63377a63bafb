#include <QtTest>
class TstPlaceholder : public QObject { Q_OBJECT private slots: void none() {} };
QTEST_MAIN(TstPlaceholder)
#include "tst_switching.moc"
