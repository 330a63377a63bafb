// A form made in a .ui file and compiled by uic opens with its stored
// language in force; loading neither rebuilds nor applies the tables.
// Application code that runs after setupUi() is no longer loading.
#include "addressform.h"
#include "ui_orderform.h"
#include "ui_translatedform.h"

#include <QtTest>

class TranslatedForm : public QMainWindow
{
    Q_OBJECT
public:
    TranslatedForm() { ui.setupUi(this); }
    Ui::TranslatedForm ui;
};

class OrderForm : public QDialog
{
    Q_OBJECT
public:
    OrderForm() { ui.setupUi(this); }
    Ui::OrderForm ui;
};

class TstUiForm : public QObject
{
    Q_OBJECT
private slots:
    void opensWithStoredLanguage();
    void loadedCompletesDialogsWhenShown();
    void switchesAfterLoading();
    void codeAfterSetupUiIsNotLoading();
    void loadedRunsOnce();
    void embeddedFormClassAndDispatcherByName();
};

void TstUiForm::opensWithStoredLanguage()
{
    TranslatedForm form;
    TVexil *vx = form.ui.vexil;
    QVERIFY(vx->isLoading());
    QCOMPARE(vx->owner(), &form);
    QCOMPARE(vx->NumOfLanguages(), 2);
    QCOMPARE(vx->ActiveLanguage(), 2);
    QCOMPARE(vx->Language(), QStringLiteral("GERMAN"));
    QCOMPARE(vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(vx->GetText(QStringLiteral("IDS_READY")), QStringLiteral("Bereit"));
    // Nothing was rebuilt: the label has no line, and nothing was applied.
    QCOMPARE(vx->Captions()->count(), 2);
    QCOMPARE(form.ui.btnOpen->text(), QStringLiteral("Öffnen"));
    QCOMPARE(vx->DlgsCaptions()->count(), 15);
}

void TstUiForm::loadedCompletesDialogsWhenShown()
{
    TranslatedForm form;
    TVexil *vx = form.ui.vexil;
    form.show();
    QVERIFY(!vx->isLoading());
    QCOMPARE(vx->DlgsCaptions()->count(), 79);
    QCOMPARE(vx->DlgsCaptions()->at(15), QStringLiteral("Open\t&Open\t"));
    QCOMPARE(vx->GetTextFrom(vx->DlgsCaptions(), QStringLiteral("Yes"), true), QStringLiteral("&Ja"));
    QCOMPARE(vx->Captions()->count(), 2); // loading ends without a rebuild
}

void TstUiForm::switchesAfterLoading()
{
    TranslatedForm form;
    TVexil *vx = form.ui.vexil;
    QCoreApplication::processEvents(); // the event loop ending loading
    QVERIFY(!vx->isLoading());
    vx->SetActLang(1);
    QCOMPARE(form.windowTitle(), QStringLiteral("Main window"));
    QCOMPARE(form.ui.btnOpen->text(), QStringLiteral("Open"));
    QCOMPARE(form.ui.btnOpen->toolTip(), QStringLiteral("Open a file"));
    QCOMPARE(vx->GetText(QStringLiteral("IDS_READY")), QStringLiteral("Ready"));
    QVERIFY(vx->Captions()->lines().contains(QStringLiteral("lblStatus\tBereit\t\t")));
    vx->SetLanguage(QStringLiteral("German"));
    QCOMPARE(form.ui.btnOpen->text(), QStringLiteral("Öffnen"));
    QCOMPARE(form.windowTitle(), QStringLiteral("Hauptfenster"));
}

void TstUiForm::codeAfterSetupUiIsNotLoading()
{
    // A form's constructor switching its language after setupUi(), before
    // the form is shown: the switch happens now, not only in the number.
    TranslatedForm form;
    TVexil *vx = form.ui.vexil;
    QVERIFY(vx->isLoading());
    vx->SetActLang(1);
    QVERIFY(!vx->isLoading());
    QCOMPARE(form.ui.btnOpen->text(), QStringLiteral("Open"));
    QCOMPARE(vx->DlgsCaptions()->count(), 79); // loading ended properly first

    // A component made in code on a hidden form builds and switches at once.
    QWidget hidden;
    auto *label = new QLabel(QStringLiteral("Hello"), &hidden);
    label->setObjectName(QStringLiteral("lblHello"));
    auto *coded = new TVexil(&hidden);
    coded->SetNumLang(2);
    coded->BuildList();
    QCOMPARE(coded->Captions()->count(), 2);
    coded->ReplaceStringValue(coded->Captions(), QStringLiteral("lblHello"), QStringLiteral("Hallo"), 2);
    coded->SetActLang(2);
    QCOMPARE(label->text(), QStringLiteral("Hallo"));
    coded->SetActLang(2); // unchanged: nothing to do, and nothing lost
    QCOMPARE(label->text(), QStringLiteral("Hallo"));
}

void TstUiForm::loadedRunsOnce()
{
    TranslatedForm form;
    TVexil *vx = form.ui.vexil;
    vx->Loaded();
    QCOMPARE(vx->DlgsCaptions()->count(), 79);
    vx->DlgsCaptions()->setLines(vx->DlgsCaptions()->lines().mid(0, 15));
    vx->Loaded(); // a second call does nothing
    QCOMPARE(vx->DlgsCaptions()->count(), 15);
    form.show();
    QCOMPARE(vx->DlgsCaptions()->count(), 15);
}

void TstUiForm::embeddedFormClassAndDispatcherByName()
{
    OrderForm form; // its AddressForm holds a component of its own
    TVexil *outer = form.ui.vexil;
    TVexil *inner = form.ui.address->ui.vexil;
    QCOMPARE(outer->owner(), &form);
    QCOMPARE(inner->owner(), form.ui.address);

    // The dispatcher was named before it was built; loading links it.
    QCOMPARE(outer->property("LangDispatcher").toString(), QStringLiteral("dispatcher"));
    QVERIFY(!outer->LangDispatcher());
    form.show();
    QCOMPARE(outer->LangDispatcher(), form.ui.dispatcher);
    QVERIFY(form.ui.dispatcher->references().contains(outer));

    form.ui.dispatcher->SetActiveLanguage(2);
    QCOMPARE(form.windowTitle(), QStringLiteral("Bestellung"));
    QCOMPARE(form.ui.btnClose->text(), QStringLiteral("Schließen"));
    QCOMPARE(form.ui.btnClose->shortcut(), QKeySequence(Qt::Key_Escape)); // kept across the switch
    QCOMPARE(form.ui.address->ui.lblStreet->text(), QStringLiteral("Street")); // not the outer's to switch
    QCOMPARE(form.ui.address->ui.edStreet->text(), QStringLiteral("Main Street 1"));

    for (const QString &line : outer->Captions()->lines() + outer->Hints()->lines() + outer->OtherStrings()->lines()) {
        const QString key = line.section(QLatin1Char('\t'), 0, 0);
        QVERIFY2(!key.startsWith(QLatin1String("lblStreet")) && !key.startsWith(QLatin1String("edStreet"))
                     && !key.startsWith(QLatin1String("address")) && !key.startsWith(QLatin1String("dispatcher"))
                     && !key.startsWith(QLatin1String("ScrollLeftButton")),
                 qPrintable(key));
    }

    inner->SetActLang(2);
    QCOMPARE(form.ui.address->ui.lblStreet->text(), QStringLiteral("Straße"));
    QCOMPARE(form.windowTitle(), QStringLiteral("Bestellung"));
    QCOMPARE(form.ui.address->ui.edStreet->text(), QStringLiteral("Main Street 1")); // the user's text
    QVERIFY(!inner->Captions()->lines().join(QLatin1Char('\n')).contains(QLatin1String("edStreet")));
}

QTEST_MAIN(TstUiForm)
#include "tst_uiform.moc"
