// A translation component handing its file to the translation-file editor
// on the session bus and waiting: the editor is the real editor window and
// bus object, here in the test's own process, finished through its own
// Apply and Cancel commands.
#include "editorforms.h"
#include "vxfileeditorservice.h"
#include "vxfileeditorwindow.h"
#include "vxgridmodel.h"
#include "vxrteditor.h"
#include "vxvexilrtse.h"

#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtDBus/QDBusConnection>
#include <QtTest/QTest>
#include <QtWidgets/QPushButton>

#include <functional>

namespace {

// Once the editor shows the form's table, runs @p finish on it.
void whenEditing(TfrmFileEditor &window, std::function<void(TfrmRTEditor *)> finish)
{
    auto *timer = new QTimer;
    timer->setInterval(20);
    QObject::connect(timer, &QTimer::timeout, [&window, timer, finish] {
        if (!window.hasFile())
            return;
        if (window.currentForm().isEmpty())
            window.selectForm(QStringLiteral("TOrders"));
        TfrmRTEditor *editor = window.editor();
        if (!editor || editor->model()->findKey(QStringLiteral("btnSend")) < 0)
            return;
        timer->stop();
        timer->deleteLater();
        finish(editor);
    });
    timer->start();
}

} // namespace

class TestExternalEdit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void editedFileReplacesTheTables();

private:
    QTemporaryDir m_dir;
};

void TestExternalEdit::initTestCase()
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir.path());
    QVERIFY(QDBusConnection::sessionBus().isConnected());
}

void TestExternalEdit::editedFileReplacesTheTables()
{
    const QString file = m_dir.filePath(QStringLiteral("orders.lng"));
    {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("[OPTIONS]\nDELIMITER=|\n\n[Language names - for internal use only!]\nLanguage_1=ENGLISH\n"
                "Language_2=GERMAN\n\n[Captions]\nTOrders.TOrders=Orders|Bestellungen|\nTOrders.btnSend=Send|Senden|\n"
                "TOther.btnOk=OK|Gut|\n");
    }
    TOrders form;
    auto *vx = new TVexilRTSE(&form);
    vx->setNumOfLanguages(2);
    vx->setActiveLanguage(2);
    vx->setVXLFile(file);
    vx->setLoadOnCreate(true);
    vx->Loaded();
    QCOMPARE(form.button->text(), QStringLiteral("Senden"));
    form.show();

    // The editor serves under a name of its own on the tests' bus.
    TfrmFileEditor window;
    TvxFileEditorService service(&window);
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString name = QStringLiteral("org.vexil.test.editor%1").arg(QCoreApplication::applicationPid());
    QVERIFY(service.exportOn(bus));
    QVERIFY(bus.registerService(name));
    qputenv("VEXIL_EDITOR_SERVICE", name.toUtf8());

    // Cancel: the file and the tables stay as they were.
    const QByteArray before = contents(file);
    bool formDisabledMeanwhile = false;
    whenEditing(window, [&](TfrmRTEditor *editor) {
        formDisabledMeanwhile = !form.isEnabled();
        editor->model()->setCell(editor->model()->findKey(QStringLiteral("btnSend")), 2, QStringLiteral("Los"));
        editor->BitBtn2Click();
    });
    vx->EditStrings(QString(), QLatin1Char('|'));
    QVERIFY(formDisabledMeanwhile);
    QVERIFY(form.isEnabled());
    QCOMPARE(contents(file), before);
    QCOMPARE(form.button->text(), QStringLiteral("Senden"));

    // Apply: the edited file replaces the tables and the language is applied.
    whenEditing(window, [](TfrmRTEditor *editor) {
        editor->model()->setCell(editor->model()->findKey(QStringLiteral("btnSend")), 2, QStringLiteral("Abschicken"));
        editor->BitBtn1Click();
    });
    vx->EditStrings(QStringLiteral("Captions"), QLatin1Char('|'));
    QVERIFY(form.isEnabled());
    QVERIFY(contents(file).contains("TOrders.btnSend=Send|Abschicken|"));
    QVERIFY(contents(file).contains("TOther.btnOk=OK|Gut|"));
    QCOMPARE(form.button->text(), QStringLiteral("Abschicken"));
    QCOMPARE(vx->GetStringValue(vx->Captions(), QStringLiteral("btnSend"), 2), QStringLiteral("Abschicken"));

    bus.unregisterService(name);
    qunsetenv("VEXIL_EDITOR_SERVICE");
}

QTEST_MAIN(TestExternalEdit)
#include "tst_externaledit.moc"
