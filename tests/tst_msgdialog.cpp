// Message and input boxes in the active language, driven through their
// real widgets.
#include "dialogdriver.h"
#include "vxcomp.h"
#include "vxmsgdialog.h"

#include <QtTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace {

QPushButton *buttonNamed(QWidget *dialog, const char *name)
{
    return dialog->findChild<QPushButton *>(QLatin1String(name));
}

// A component with two languages and German texts for a few dialog lines.
struct German
{
    German()
    {
        vx.Loaded();
        vx.SetNumLang(2);
        for (auto [key, text] : {std::pair{"Yes", "&Ja"}, std::pair{"Confirm", "Bestätigen"},
                                 std::pair{"Cancel", "Abbrechen"}, std::pair{"OK", "In Ordnung"}}) {
            const int i = vx.DlgsCaptions()->indexOfKey(QLatin1String(key), QLatin1Char('\t'));
            vx.DlgsCaptions()->replace(i, QLatin1String(key) + QLatin1Char('\t')
                                              + vx.DlgsCaptions()->at(i).section(QLatin1Char('\t'), 1, 1)
                                              + QLatin1Char('\t') + QString::fromUtf8(text) + QLatin1Char('\t'));
        }
        vx.SetActLang(2);
    }
    QWidget form;
    TVexil vx{&form};
};

} // namespace

class TstMsgDialog : public QObject
{
    Q_OBJECT
private slots:
    void confirmationInActiveLanguage();
    void escapeAndResults();
    void emptyTableKeepsEnglish();
    void longMessageAndCaptionsGrowTheForm();
    void inputQuery();
    void ownerFreedWhileOpen();
    void formatInsertsValuesOnce();
};

void TstMsgDialog::confirmationInActiveLanguage()
{
    German g;
    QString title, yes, no;
    onNextModal([&](QWidget *dialog) {
        title = dialog->windowTitle();
        yes = buttonNamed(dialog, "Yes")->text();
        no = buttonNamed(dialog, "No")->text();
        QVERIFY(buttonNamed(dialog, "Yes")->isDefault());
        QTest::mouseClick(buttonNamed(dialog, "No"), Qt::LeftButton);
    });
    QCOMPARE(g.vx.MessageDlg(QStringLiteral("Save the file?"), mtConfirmation, mbYes | mbNo), int(mrNo));
    QCOMPARE(title, QStringLiteral("Bestätigen"));
    QCOMPARE(yes, QStringLiteral("&Ja"));
    QCOMPARE(no, QStringLiteral("&No")); // no German text: language 1's

    std::unique_ptr<TMessageForm> form(g.vx.CreateMessageDialog(QStringLiteral("x"), mtError,
                                                                mbAbort | mbRetry | mbIgnore | mbHelp));
    QCOMPARE(form->windowTitle(), QStringLiteral("Error"));
    QCOMPARE(form->buttons().size(), 4);
    QVERIFY(form->findChild<QLabel *>(QStringLiteral("Image"))->pixmap().width() == 32);
    QCOMPARE(form->findChild<QLabel *>(QStringLiteral("Message"))->text(), QStringLiteral("x"));
}

void TstMsgDialog::escapeAndResults()
{
    German g;
    const QList<QPair<TMsgDlgButtons, int>> cases = {{mbYes | mbNo | mbCancel, mrCancel},
                                                     {mbYes | mbNo, mrNo},
                                                     {mbOK, mrOk}};
    for (const auto &c : cases) {
        onNextModal([](QWidget *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
        QCOMPARE(g.vx.MessageDlg(QStringLiteral("Escape"), mtWarning, c.first), c.second);
    }
    onNextModal([](QWidget *dialog) { QTest::mouseClick(buttonNamed(dialog, "Yes To All"), Qt::LeftButton); });
    QCOMPARE(g.vx.MessageDlgPos(QStringLiteral("All?"), mtInformation, mbYesToAll | mbNoToAll, 0, 5, 6), int(mrYesToAll));
}

void TstMsgDialog::emptyTableKeepsEnglish()
{
    TVexil vx;
    vx.DlgsCaptions()->clear();
    QString ok;
    onNextModal([&](QWidget *dialog) {
        ok = buttonNamed(dialog, "OK")->text();
        QTest::mouseClick(buttonNamed(dialog, "OK"), Qt::LeftButton);
    });
    vx.ShowMessageFmt(QStringLiteral("%1 files, %2"), {3, QStringLiteral("done")});
    QCOMPARE(ok, QStringLiteral("OK"));
}

void TstMsgDialog::longMessageAndCaptionsGrowTheForm()
{
    German g;
    std::unique_ptr<TMessageForm> small(g.vx.CreateMessageDialog(QStringLiteral("Short."), mtWarning, mbOK));
    const QString longText = QStringLiteral("A long message that goes on and on. ").repeated(40);
    std::unique_ptr<TMessageForm> big(g.vx.CreateMessageDialog(longText, mtWarning, mbOK));
    QVERIFY(big->height() > small->height() + 2 * small->fontMetrics().height());
    QLabel *message = big->findChild<QLabel *>(QStringLiteral("Message"));
    QVERIFY(message->geometry().bottom() < big->buttons().first()->y()); // the buttons sit below the text
    QVERIFY(big->width() < 2000);

    // A long translated caption gets a wide enough button.
    g.vx.DlgsCaptions()->replace(6, QStringLiteral("OK\tOK\tEinverstanden und weiter zum nächsten Schritt\t"));
    std::unique_ptr<TMessageForm> wide(g.vx.CreateMessageDialog(QStringLiteral("x"), mtWarning, mbOK));
    QPushButton *ok = wide->buttons().first();
    QVERIFY(ok->width() >= ok->fontMetrics().horizontalAdvance(ok->text()));
    QVERIFY(wide->width() >= ok->width());
}

void TstMsgDialog::inputQuery()
{
    German g;
    QString cancelText;
    onNextModal([&](QWidget *dialog) {
        cancelText = buttonNamed(dialog, "Cancel")->text();
        auto *edit = dialog->findChild<QLineEdit *>();
        QCOMPARE(edit->text(), QStringLiteral("old"));
        edit->setText(QStringLiteral("new name"));
        QTest::mouseClick(buttonNamed(dialog, "OK"), Qt::LeftButton);
    });
    QString value = QStringLiteral("old");
    QVERIFY(g.vx.InputQuery(QStringLiteral("Rename"), QStringLiteral("Name:"), value));
    QCOMPARE(value, QStringLiteral("new name"));
    QCOMPARE(cancelText, QStringLiteral("Abbrechen"));

    onNextModal([](QWidget *dialog) {
        dialog->findChild<QLineEdit *>()->setText(QStringLiteral("ignored"));
        QTest::mouseClick(buttonNamed(dialog, "Cancel"), Qt::LeftButton);
    });
    QCOMPARE(g.vx.InputBox(QStringLiteral("Rename"), QStringLiteral("Name:"), QStringLiteral("default")),
             QStringLiteral("default"));
}

// Freeing the owner window from inside a box's event loop frees the box and
// the component with it; the call must come back as a cancelled box does.
void TstMsgDialog::ownerFreedWhileOpen()
{
    const QList<QPair<TMsgDlgButtons, int>> cases = {{mbYes | mbNo | mbCancel, mrCancel},
                                                     {mbYes | mbNo, mrNo},
                                                     {mbOK, mrOk}};
    for (const auto &c : cases) {
        auto *owner = new QWidget;
        auto *vx = new TVexil(owner);
        QPointer<QWidget> box;
        onNextModal([&](QWidget *dialog) {
            box = dialog;
            QCOMPARE(dialog->parentWidget(), owner);
            delete owner;
        });
        QCOMPARE(vx->MessageDlg(QStringLiteral("Going"), mtConfirmation, c.first), c.second);
        QVERIFY(!box);
    }
    {
        auto *owner = new QWidget;
        auto *vx = new TVexil(owner);
        QPointer<QWidget> box;
        onNextModal([&](QWidget *dialog) {
            box = dialog;
            dialog->findChild<QLineEdit *>()->setText(QStringLiteral("typed"));
            delete owner;
        });
        QString value = QStringLiteral("kept");
        QVERIFY(!vx->InputQuery(QStringLiteral("Name"), QStringLiteral("Name:"), value));
        QCOMPARE(value, QStringLiteral("kept"));
        QVERIFY(!box);
    }
    {
        auto *owner = new QWidget;
        auto *vx = new TVexil(owner);
        onNextModal([&](QWidget *) { delete owner; });
        QCOMPARE(vx->InputBox(QStringLiteral("Name"), QStringLiteral("Name:"), QStringLiteral("default")),
                 QStringLiteral("default"));
    }
    {
        auto *owner = new QWidget;
        auto *vx = new TVexil(owner);
        onNextModal([&](QWidget *) { delete owner; });
        vx->ShowMessage(QStringLiteral("Gone")); // returns, and nothing is freed twice
    }
}

void TstMsgDialog::formatInsertsValuesOnce()
{
    using Vexil::formatMessage;
    // A marker inside a value is text, not a marker.
    QCOMPARE(formatMessage(QStringLiteral("%1 and %2"), {QStringLiteral("50%2"), QStringLiteral("b")}),
             QStringLiteral("50%2 and b"));
    QCOMPARE(formatMessage(QStringLiteral("%2, %1, %2"), {QStringLiteral("one"), QStringLiteral("%1")}),
             QStringLiteral("%1, one, %1"));
    // Lowest marker first; gaps in the numbers do not matter.
    QCOMPARE(formatMessage(QStringLiteral("%3 of %7"), {2, 5}), QStringLiteral("2 of 5"));
    QCOMPARE(formatMessage(QStringLiteral("%L1 / %10 / %"), {QStringLiteral("x"), QStringLiteral("y")}),
             QStringLiteral("x / y / %"));
    QCOMPARE(formatMessage(QStringLiteral("%1 %2"), {QStringLiteral("only")}), QStringLiteral("only %2"));

    TVexil vx;
    QString shown;
    onNextModal([&](QWidget *dialog) {
        shown = dialog->findChild<QLabel *>(QStringLiteral("Message"))->text();
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    vx.ShowMessageFmt(QStringLiteral("Copied %1 to %2"), {QStringLiteral("a%2b"), QStringLiteral("C:")});
    QCOMPARE(shown, QStringLiteral("Copied a%2b to C:"));
}

QTEST_MAIN(TstMsgDialog)
#include "tst_msgdialog.moc"
