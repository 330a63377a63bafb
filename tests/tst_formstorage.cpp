// Form placement: restored after loading, saved when the form goes, and
// kept in settings that point at a temporary folder.
#include "vxerrors.h"
#include "vxformstorage.h"

#include <QtTest>

class TstFormStorage : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
        QSettings::setPath(QSettings::NativeFormat, QSettings::SystemScope, m_dir.path() + QStringLiteral("/system"));
    }
    void firstRunThenRestore();
    void maximizedKeepsNormalBounds();
    void minimizedAndThirdLetter();
    void damagedValuesGiveDesignedBounds();
    void unknownStateKeepsWindowState();
    void writeErrorReachesCaller();
    void inactiveOrDesigningTouchesNothing();

private:
    // A form as setupUi leaves it: hidden, designed bounds, storage loading.
    struct Form
    {
        explicit Form(const QString &subKey, bool active = true)
        {
            window.move(10, 20);
            window.resize(300, 200);
            storage = new TvxFormStorage(&window);
            storage->SetSubKey(subKey);
            storage->SetMyActive(active);
        }
        QWidget window;
        TvxFormStorage *storage;
    };
    QSettings settings(const QString &app)
    {
        return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Acme"), app);
    }
    QTemporaryDir m_dir;
};

void TstFormStorage::firstRunThenRestore()
{
    const QString key = QStringLiteral("Software\\Acme\\First\\Main");
    {
        Form f(key);
        QCOMPARE(f.storage->GetForm(), &f.window);
        f.storage->Loaded();
        QCOMPARE(f.window.pos(), QPoint(10, 20)); // nothing saved yet
        f.window.move(40, 50);
        f.window.resize(320, 240);
    }
    QSettings s = settings(QStringLiteral("First"));
    s.beginGroup(QStringLiteral("Main"));
    QCOMPARE(s.value(QStringLiteral("State")).toString(), QStringLiteral("Normal"));
    QCOMPARE(s.value(QStringLiteral("Width")).toInt(), 320);

    Form again(key);
    again.window.show(); // loading ends just before the form is shown
    QCOMPARE(again.window.pos(), QPoint(40, 50));
    QCOMPARE(again.window.size(), QSize(320, 240));
    // Two forms with the same key share one placement.
    Form twin(key);
    twin.storage->Loaded();
    QCOMPARE(twin.window.size(), QSize(320, 240));
}

void TstFormStorage::maximizedKeepsNormalBounds()
{
    const QString key = QStringLiteral("Software/Acme/Max");
    {
        Form f(key);
        f.storage->Loaded();
        f.window.resize(350, 250);
    }
    {
        Form f(key);
        f.storage->Loaded();
        f.window.resize(999, 999);
        f.window.setWindowState(Qt::WindowMaximized);
    }
    QCOMPARE(settings(QStringLiteral("Max")).value(QStringLiteral("State")).toString(), QStringLiteral("Maximized"));
    QCOMPARE(settings(QStringLiteral("Max")).value(QStringLiteral("Width")).toInt(), 350);
    Form f(key);
    f.storage->Loaded();
    QCOMPARE(f.window.size(), QSize(350, 250));
    QVERIFY(f.window.windowState() & Qt::WindowMaximized);
}

void TstFormStorage::minimizedAndThirdLetter()
{
    QSettings s = settings(QStringLiteral("Letters"));
    s.setValue(QStringLiteral("Top"), 5);
    s.setValue(QStringLiteral("Left"), 6);
    s.setValue(QStringLiteral("Height"), 150);
    s.setValue(QStringLiteral("Width"), 250);
    const QList<QPair<QString, Qt::WindowStates>> cases = {
        {QStringLiteral("Minimized"), Qt::WindowMinimized},
        {QStringLiteral("xxx"), Qt::WindowMaximized}, // only the third letter counts
        {QStringLiteral("Normal"), Qt::WindowNoState},
        {QStringLiteral("Ok"), Qt::WindowNoState}};
    for (const auto &c : cases) {
        s.setValue(QStringLiteral("State"), c.first);
        s.sync();
        Form f(QStringLiteral("Software\\Acme\\Letters"), true);
        f.window.setWindowState(Qt::WindowNoState);
        f.storage->Loaded();
        QCOMPARE(f.window.windowState(), c.second);
        QCOMPARE(f.window.size(), QSize(250, 150));
        QCOMPARE(f.window.pos(), QPoint(6, 5));
        f.storage->SetMyActive(false); // keep the test's values
    }
}

void TstFormStorage::damagedValuesGiveDesignedBounds()
{
    QSettings s = settings(QStringLiteral("Damaged"));
    s.setValue(QStringLiteral("State"), QStringLiteral("Maximized"));
    s.setValue(QStringLiteral("Top"), 77);
    s.setValue(QStringLiteral("Left"), 88);
    s.setValue(QStringLiteral("Height"), QStringLiteral("tall"));
    s.sync();
    Form f(QStringLiteral("Software\\Acme\\Damaged"));
    f.storage->Loaded();
    QCOMPARE(f.window.pos(), QPoint(10, 20));
    QCOMPARE(f.window.size(), QSize(300, 200));
    QVERIFY(!(f.window.windowState() & Qt::WindowMaximized));
}

void TstFormStorage::unknownStateKeepsWindowState()
{
    QSettings s = settings(QStringLiteral("Unknown"));
    s.setValue(QStringLiteral("Top"), 5);
    s.setValue(QStringLiteral("Left"), 6);
    s.setValue(QStringLiteral("Height"), 150);
    s.setValue(QStringLiteral("Width"), 250);
    s.setValue(QStringLiteral("State"), QStringLiteral("Docked"));
    s.sync();
    // A form shown maximized: restoring runs on the shown window, whose
    // state moving and resizing would drop.
    Form f(QStringLiteral("Software\\Acme\\Unknown"));
    f.window.setWindowState(Qt::WindowMaximized);
    f.window.show();
    QVERIFY(f.storage->GetForm()->isVisible());
    QVERIFY(f.window.windowState() & Qt::WindowMaximized);
    f.storage->SetMyActive(false);

    // Damaged numbers on a shown maximized form: bounds and state stay.
    s.setValue(QStringLiteral("State"), QStringLiteral("Normal"));
    s.setValue(QStringLiteral("Width"), QStringLiteral("wide"));
    s.sync();
    Form g(QStringLiteral("Software\\Acme\\Unknown"));
    g.window.setWindowState(Qt::WindowMaximized);
    g.window.show();
    QVERIFY(g.window.windowState() & Qt::WindowMaximized);
    g.storage->SetMyActive(false);
}

void TstFormStorage::writeErrorReachesCaller()
{
    // A folder where the settings file should be: nothing can be written.
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("Acme/Broken.conf")));
    Form f(QStringLiteral("Software\\Acme\\Broken"));
    f.storage->Loaded();
    QVERIFY_THROWS_EXCEPTION(EVexilError, f.storage->FormDestroing());
    // The destructor still swallows it when the form goes.
}

void TstFormStorage::inactiveOrDesigningTouchesNothing()
{
    {
        Form f(QStringLiteral("Software\\Acme\\Off"), false);
        f.storage->Loaded();
    }
    {
        Form f(QStringLiteral("Software\\Acme\\Designer"));
        f.storage->setDesigning(true);
        f.storage->Loaded();
    }
    QVERIFY(settings(QStringLiteral("Off")).allKeys().isEmpty());
    QVERIFY(settings(QStringLiteral("Designer")).allKeys().isEmpty());

    Form system(QStringLiteral("Software\\Acme\\Sys"));
    system.storage->SetRegRootKey(TvxFormStorage::vxHKEY_LOCAL_MACHINE);
    QCOMPARE(system.storage->RootKeyHandle(), 0x80000002u);
    QVERIFY_THROWS_EXCEPTION(std::exception, TvxFormStorage(nullptr));
}

QTEST_MAIN(TstFormStorage)
#include "tst_formstorage.moc"
