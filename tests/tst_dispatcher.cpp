// The dispatcher: one language setting pushed to the components of many
// windows, and references that never outlive either side.
#include "vxcomp.h"
#include "vxdispatcher.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QPushButton>

class Window : public QWidget
{
    Q_OBJECT
public:
    explicit Window(const char *caption, const char *german)
    {
        button = new QPushButton(QString::fromUtf8(caption), this);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
        vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), QString::fromUtf8(german), 2);
    }
    QPushButton *button;
    TVexil *vx;
};

class TstDispatcher : public QObject
{
    Q_OBJECT
private slots:
    void fansOutToEveryWindow();
    void namesAndCount();
    void registrationRules();
    void referencesClearedOnDestruction();
    void registrationPastTheCount();
    void namesNeverLeaveComponentsWithout();
    void formBuildingKeepsComponentsLoading();
};

// A dispatcher set by form-building code passes its values on as part of
// building the form: the components linked to it stay loading, and the
// dialog texts the form sets afterwards are still completed.
void TstDispatcher::formBuildingKeepsComponentsLoading()
{
    QWidget form;
    auto *dispatcher = new TVexilDispatcher(&form);
    dispatcher->setObjectName(QStringLiteral("dispatcher"));
    auto *vx = new TVexil(&form);
    vx->setLangDispatcher(QStringLiteral("dispatcher"));
    QCOMPARE(vx->LangDispatcher(), dispatcher);
    dispatcher->setLangNames({QStringLiteral("English"), QStringLiteral("Deutsch")}); // as retranslateUi() would
    QVERIFY(vx->isLoading());
    QCOMPARE(vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("DEUTSCH")}));
    vx->setDlgsCaptions(vx->DlgsCaptions()->lines().mid(0, 15));
    form.show();
    QVERIFY(!vx->isLoading());
    QCOMPARE(vx->DlgsCaptions()->count(), 79);
    dispatcher->SetActiveLanguage(2); // application code afterwards
    QCOMPARE(vx->ActiveLanguage(), 2);
}

void TstDispatcher::fansOutToEveryWindow()
{
    TVexilDispatcher dispatcher;
    Window a("Open", "Öffnen"), b("Close", "Schließen");
    a.vx->SetLangDispatcher(&dispatcher);
    b.vx->SetLangDispatcher(&dispatcher);
    QCOMPARE(a.vx->NumOfLanguages(), 1); // the dispatcher's count was pushed
    dispatcher.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    QCOMPARE(b.vx->NumOfLanguages(), 2);
    QCOMPARE(b.vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));

    dispatcher.SetLanguage(QStringLiteral("german"));
    QCOMPARE(dispatcher.ActiveLanguage(), 2);
    QCOMPARE(a.button->text(), QStringLiteral("Öffnen"));
    QCOMPARE(b.button->text(), QStringLiteral("Schließen"));
    QCOMPARE(a.vx->ActiveLanguage(), 2);
    dispatcher.SetActiveLanguage(1);
    QCOMPARE(dispatcher.Language(), QStringLiteral("ENGLISH"));
    QCOMPARE(b.button->text(), QStringLiteral("Close"));

    try {
        dispatcher.SetLanguage(QStringLiteral("French"));
        QFAIL("no exception");
    } catch (const ELanguageError &e) {
        QCOMPARE(e.message(), QStringLiteral("Language name shall be included in LangNames property!"));
    }
    QCOMPARE(dispatcher.Language(), QStringLiteral("ENGLISH"));
}

void TstDispatcher::namesAndCount()
{
    TVexilDispatcher dispatcher;
    dispatcher.SetNumOfLanguages(3);
    QCOMPARE(dispatcher.LangNames()->lines(),
             (QStringList{QStringLiteral("LANGUAGE N1"), QStringLiteral("LANGUAGE N2"), QStringLiteral("LANGUAGE N3")}));
    dispatcher.SetNumOfLanguages(2);
    QCOMPARE(dispatcher.LangNames()->count(), 2);
    dispatcher.SetLangNames(QStringList{});
    QCOMPARE(dispatcher.NumOfLanguages(), 1);
    QCOMPARE(dispatcher.LangNames()->lines(), QStringList{QStringLiteral("LANGUAGE N1")});
}

void TstDispatcher::registrationRules()
{
    TVexilDispatcher first, second;
    first.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    first.SetActiveLanguage(2);
    Window w("OK", "Gut");
    w.vx->SetLangDispatcher(&first);
    QCOMPARE(w.vx->ActiveLanguage(), 2);
    QCOMPARE(w.vx->Language(), QStringLiteral("GERMAN"));
    QCOMPARE(w.button->text(), QStringLiteral("Gut"));
    w.vx->SetLangDispatcher(&first);
    QCOMPARE(first.references().size(), 1);

    // Moving to another dispatcher leaves the first one's list as it was.
    second.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    w.vx->SetLangDispatcher(&second);
    QCOMPARE(first.references().size(), 1);
    QCOMPARE(second.references().size(), 1);
    QCOMPARE(w.vx->ActiveLanguage(), 1);
}

void TstDispatcher::referencesClearedOnDestruction()
{
    auto *dispatcher = new TVexilDispatcher;
    auto *other = new TVexilDispatcher;
    auto *w = new Window("OK", "Gut");
    w->vx->SetLangDispatcher(other);
    w->vx->SetLangDispatcher(dispatcher);
    delete w;
    QVERIFY(dispatcher->references().isEmpty());
    QVERIFY(other->references().isEmpty()); // the old dispatcher forgets it too
    other->SetActiveLanguage(1);            // and can still be used

    Window survivor("OK", "Gut");
    dispatcher->SetNumOfLanguages(2);
    survivor.vx->SetLangDispatcher(dispatcher);
    delete dispatcher;
    QCOMPARE(survivor.vx->LangDispatcher(), nullptr);
    survivor.vx->SetActLang(2);
    QCOMPARE(survivor.button->text(), QStringLiteral("Gut"));
    delete other;
}

void TstDispatcher::registrationPastTheCount()
{
    // A component on its third language joins a dispatcher of two.
    TVexilDispatcher dispatcher;
    dispatcher.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    dispatcher.SetActiveLanguage(2);
    Window w("OK", "Gut");
    w.vx->SetNumLang(3);
    w.vx->SetLangNames({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    w.vx->SetActLang(3);
    w.vx->SetLangDispatcher(&dispatcher);
    QCOMPARE(w.vx->LangDispatcher(), &dispatcher);
    QCOMPARE(dispatcher.references(), QList<TvxCustomLang *>{w.vx});
    QCOMPARE(w.vx->NumOfLanguages(), 2);
    QCOMPARE(w.vx->ActiveLanguage(), 2);
    QCOMPARE(w.vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(w.vx->Language(), QStringLiteral("GERMAN"));
    QCOMPARE(w.button->text(), QStringLiteral("Gut"));
    dispatcher.SetActiveLanguage(1);
    QCOMPARE(w.button->text(), QStringLiteral("OK"));

    // A dispatcher whose state no component could take refuses before
    // anything changes, and the component keeps its previous dispatcher.
    TVexilDispatcher broken;
    broken.SetActiveLanguage(5); // nobody registered, so nobody objected
    Window v("OK", "Gut");
    v.vx->SetLangDispatcher(&dispatcher);
    QVERIFY_THROWS_EXCEPTION(ELanguageError, v.vx->SetLangDispatcher(&broken));
    QCOMPARE(v.vx->LangDispatcher(), &dispatcher);
    QVERIFY(broken.references().isEmpty());
    QCOMPARE(v.vx->NumOfLanguages(), 2);
    QCOMPARE(v.vx->ActiveLanguage(), 1);
}

void TstDispatcher::namesNeverLeaveComponentsWithout()
{
    TVexilDispatcher dispatcher;
    dispatcher.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    Window w("OK", "Gut");
    w.vx->SetLangDispatcher(&dispatcher);
    dispatcher.SetLangNames(QStringList{});
    QCOMPARE(dispatcher.LangNames()->lines(), QStringList{QStringLiteral("LANGUAGE N1")});
    QCOMPARE(dispatcher.NumOfLanguages(), 1);
    QCOMPARE(dispatcher.Language(), QStringLiteral("LANGUAGE N1"));
    QCOMPARE(w.vx->LangNames()->lines(), QStringList{QStringLiteral("LANGUAGE N1")});
    QCOMPARE(w.vx->NumOfLanguages(), 1);
    QCOMPARE(w.vx->Language(), QStringLiteral("LANGUAGE N1"));

    // Fewer names than the active language: refused, nothing changed.
    dispatcher.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    dispatcher.SetActiveLanguage(2);
    QVERIFY_THROWS_EXCEPTION(EListError, dispatcher.SetLangNames(QStringList{}));
    QVERIFY_THROWS_EXCEPTION(EListError, dispatcher.SetLangNames({QStringLiteral("French")}));
    QCOMPARE(dispatcher.LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(dispatcher.NumOfLanguages(), 2);
    QCOMPARE(w.vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(w.button->text(), QStringLiteral("Gut"));
}

QTEST_MAIN(TstDispatcher)
#include "tst_dispatcher.moc"
