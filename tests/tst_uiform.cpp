// A form made in a .ui file and compiled by uic opens with its stored
// language in force; loading neither rebuilds nor applies the tables.
#include "ui_translatedform.h"

#include <QtTest>

class TranslatedForm : public QMainWindow
{
    Q_OBJECT
public:
    TranslatedForm() { ui.setupUi(this); }
    Ui::TranslatedForm ui;
};

class TstUiForm : public QObject
{
    Q_OBJECT
private slots:
    void opensWithStoredLanguage();
    void loadedCompletesDialogsWhenShown();
    void switchesAfterLoading();
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

QTEST_MAIN(TstUiForm)
#include "tst_uiform.moc"
