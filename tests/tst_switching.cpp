// Language switching on real widgets: what is written, what is left alone,
// and the order of the steps.
#include "vxcomp.h"
#include "vxerrors.h"
#include "vxlocalesettings.h"
#include "vxpropaccess.h"

#include <QtTest>
#include <QtWidgets/QMenu>
#include <QtWidgets/QGroupBox>
#include <QtGui/QFontDatabase>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeWidget>

class TForm2 : public QWidget
{
    Q_OBJECT
public:
    TForm2()
    {
        setWindowTitle(QStringLiteral("Hello"));
        button = new QPushButton(QStringLiteral("Yes"), this);
        button->setObjectName(QStringLiteral("Button1"));
        label = new QLabel(QStringLiteral("Name"), this);
        label->setObjectName(QStringLiteral("Label1"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
    }
    void translate(TStringsType type, const QString &key, const QString &text)
    {
        vx->ReplaceStringValue(vx->GetPropListByType(type), key, text, 2);
    }
    QPushButton *button;
    QLabel *label;
    TVexil *vx;
};

class TstSwitching : public QObject
{
    Q_OBJECT
private slots:
    void switchesAndSwitchesBack();
    void formChangesBetweenSwitchesAreSeen();
    void sameLanguageDoesNothing();
    void outOfRangeRaisesUnlessLoading();
    void emptyTextsAndTranslateType();
    void formCaptionFromFirstLine();
    void plainObjectOwner();
    void multiLinesChangeLineByLine();
    void collections();
    void locales();
    void doNotTranslate();
    void charSetsReapplyFontsOnly();
};

void TstSwitching::switchesAndSwitchesBack()
{
    TForm2 form;
    form.translate(stCaptions, QStringLiteral("TForm2"), QStringLiteral("Hallo"));
    form.translate(stCaptions, QStringLiteral("Button1"), QStringLiteral("Ja"));
    form.vx->SetLangNames({QStringLiteral("English"), QStringLiteral("Deutsch")});
    int callbacks = 0;
    form.vx->OnChangeLanguage = [&](TvxCustomLang *sender) {
        QCOMPARE(sender, form.vx);
        ++callbacks;
    };
    QSignalSpy spy(form.vx, &TvxCustomLang::languageChanged);

    form.vx->SetActLang(2);
    QCOMPARE(form.windowTitle(), QStringLiteral("Hallo"));
    QCOMPARE(form.button->text(), QStringLiteral("Ja"));
    QCOMPARE(form.label->text(), QStringLiteral("Name")); // untranslated text left alone
    QCOMPARE(form.vx->Language(), QStringLiteral("DEUTSCH"));
    QCOMPARE(callbacks, 1);
    QCOMPARE(spy.count(), 1);

    form.vx->SetLanguage(QStringLiteral("english"));
    QCOMPARE(form.vx->ActiveLanguage(), 1);
    QCOMPARE(form.button->text(), QStringLiteral("Yes"));
    QCOMPARE(form.windowTitle(), QStringLiteral("Hello"));
    QCOMPARE(callbacks, 2);
}

// A switch reuses what it knows of the form only while the form is the same:
// widgets added, removed, renamed, moved or turned into separators between
// two switches are all seen by the next one.
void TstSwitching::formChangesBetweenSwitchesAreSeen()
{
    TForm2 form;
    auto *box = new QGroupBox(&form);
    box->setObjectName(QStringLiteral("box"));
    auto *menu = new QMenu(&form);
    menu->setObjectName(QStringLiteral("menu"));
    QAction *item = menu->addSeparator();
    item->setObjectName(QStringLiteral("item"));
    form.vx->SetActLang(2);
    form.vx->SetActLang(1);
    const auto captions = [&] { return form.vx->Captions()->lines().join(QLatin1Char('|')); };

    auto *added = new QLabel(QStringLiteral("Added"), box); // into a container walked before
    added->setObjectName(QStringLiteral("lblAdded"));
    form.vx->SetActLang(2);
    QVERIFY(captions().contains(QLatin1String("lblAdded\tAdded\t")));

    form.label->setObjectName(QStringLiteral("lblRenamed"));
    form.vx->SetActLang(1);
    QVERIFY(captions().contains(QLatin1String("lblRenamed\tName\t")));
    QVERIFY(!captions().contains(QLatin1String("Label1")));

    item->setSeparator(false);
    item->setText(QStringLiteral("Item"));
    form.vx->SetActLang(2);
    QVERIFY(captions().contains(QLatin1String("item\tItem\t")));

    delete added; // a freed widget is never touched again
    auto *moved = form.button;
    moved->setParent(box);
    form.vx->SetActLang(1);
    QVERIFY(!captions().contains(QLatin1String("lblAdded")));
    QVERIFY(captions().contains(QLatin1String("Button1")));

    // A form embedded with its own component leaves the outer one's lines.
    auto *inner = new QWidget(box);
    auto *innerLabel = new QLabel(QStringLiteral("Inner"), inner);
    innerLabel->setObjectName(QStringLiteral("lblInner"));
    form.vx->SetActLang(2);
    QVERIFY(captions().contains(QLatin1String("lblInner")));
    class InnerForm : public QWidget {};
    auto *innerForm = new InnerForm;
    innerForm->setObjectName(QStringLiteral("innerForm"));
    auto *innerVx = new TVexil(innerForm);
    innerLabel->setParent(innerForm);
    innerForm->setParent(box);
    form.vx->SetActLang(1);
    QVERIFY(!captions().contains(QLatin1String("lblInner")));
    QVERIFY(!captions().contains(QLatin1String("innerForm")));
    delete innerVx; // its form is the outer one's again
    form.vx->SetActLang(2);
    QVERIFY(captions().contains(QLatin1String("lblInner")));
}

void TstSwitching::sameLanguageDoesNothing()
{
    TForm2 form;
    QSignalSpy spy(form.vx, &TvxCustomLang::languageChanged);
    auto *late = new QPushButton(QStringLiteral("Late"), &form);
    late->setObjectName(QStringLiteral("Late"));
    form.vx->SetActLang(1);
    QCOMPARE(spy.count(), 0);
    QVERIFY(!form.vx->Captions()->text().contains(QStringLiteral("Late"))); // no rebuild either
}

void TstSwitching::outOfRangeRaisesUnlessLoading()
{
    TForm2 form;
    for (int bad : {0, 3}) {
        try {
            form.vx->SetActLang(bad);
            QFAIL("no exception");
        } catch (const ELanguageError &e) {
            QCOMPARE(e.message(), QString::number(bad) + QStringLiteral(" - is not a valid property value !\r"
                                                                        "Value must be within [1..NumOfLanguages] !"));
        }
        QCOMPARE(form.vx->ActiveLanguage(), 1);
    }

    QWidget loadingForm;
    TVexil loading(&loadingForm);
    QVERIFY(loading.isLoading());
    loading.setActiveLanguage(5); // as setupUi would write it
    QCOMPARE(loading.ActiveLanguage(), 1);
    QVERIFY(loading.isLoading());
}

void TstSwitching::emptyTextsAndTranslateType()
{
    TForm2 form;
    form.vx->SetActLang(2); // language 2 has no texts yet
    QCOMPARE(form.button->text(), QStringLiteral("Yes"));
    form.button->setText(QStringLiteral("Changed at run time"));
    form.vx->SetActLang(1);
    form.vx->SetActLang(2);
    QCOMPARE(form.button->text(), QStringLiteral("Yes")); // language 1 was applied on the way

    form.button->setText(QStringLiteral("Changed again"));
    form.vx->SetTranslateType(ttGetDefault);
    form.vx->ChangeLanguage();
    QCOMPARE(form.button->text(), QStringLiteral("Yes"));
}

void TstSwitching::formCaptionFromFirstLine()
{
    TForm2 form;
    form.vx->SetActLang(2);
    // Assigning the table applies it without a rebuild, which would put the
    // form's own line back in front.
    form.vx->setCaptions({QStringLiteral("Button1\tFirst\tErste\t"), QStringLiteral("Label1\tL\tEl\t")});
    // The first line is the form's own, whatever its key; it is not applied
    // to the component it names.
    QCOMPARE(form.windowTitle(), QStringLiteral("Erste"));
    QCOMPARE(form.label->text(), QStringLiteral("El"));
}

void TstSwitching::plainObjectOwner()
{
    QObject module;
    module.setObjectName(QStringLiteral("DataModule1"));
    auto *action = new QAction(QStringLiteral("Save"), &module);
    action->setObjectName(QStringLiteral("actSave"));
    TVexil vx(&module);
    QVERIFY(!vx.isLoading());
    vx.SetNumLang(2);
    vx.setCaptions({QStringLiteral("actSave\tSave\tSpeichern\t")});
    vx.SetActLang(2);
    QCOMPARE(action->text(), QStringLiteral("Speichern")); // line 1 applied by name
}

void TstSwitching::multiLinesChangeLineByLine()
{
    TForm2 form;
    auto *memo = new QPlainTextEdit(QStringLiteral("a\nb\nc\nd\ne"), &form);
    memo->setObjectName(QStringLiteral("Memo1"));
    auto *combo = new QComboBox(&form);
    combo->setObjectName(QStringLiteral("cbSize"));
    combo->addItems({QStringLiteral("Small"), QStringLiteral("Medium"), QStringLiteral("Large")});
    combo->setCurrentIndex(2);
    form.vx->BuildList();
    form.translate(stMultiLines, QStringLiteral("Memo1.Lines"), QStringLiteral("eins,\"zwei drei\",vier"));
    form.translate(stMultiLines, QStringLiteral("cbSize.Items"), QStringLiteral("Klein,Mittel,Groß"));
    QSignalSpy indexSpy(combo, &QComboBox::currentIndexChanged);

    form.vx->SetActLang(2);
    QCOMPARE(memo->toPlainText(), QStringLiteral("eins\nzwei drei\nvier"));
    QCOMPARE(combo->currentIndex(), 2);
    QCOMPARE(combo->currentText(), QStringLiteral("Groß"));
    QCOMPARE(indexSpy.count(), 0);
    form.vx->SetActLang(1);
    QCOMPARE(memo->toPlainText(), QStringLiteral("a\nb\nc\nd\ne"));
    QCOMPARE(combo->currentText(), QStringLiteral("Large"));
}

void TstSwitching::collections()
{
    TForm2 form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tvFiles"));
    tree->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Size")});
    auto *tabs = new QTabWidget(&form);
    tabs->setObjectName(QStringLiteral("tabs"));
    tabs->addTab(new QWidget, QStringLiteral("General"));
    form.vx->BuildList();
    form.translate(stCollections, QStringLiteral("tvFiles.Columns[1].Caption"), QStringLiteral("Größe"));
    form.translate(stCollections, QStringLiteral("tabs.Tabs[0].Text"), QStringLiteral("Allgemein"));
    form.translate(stCollections, QStringLiteral("tabs.Tabs[0].Hint"), QStringLiteral("Grundeinstellungen"));
    form.vx->SetActLang(2);
    QCOMPARE(tree->headerItem()->text(0), QStringLiteral("Name"));
    QCOMPARE(tree->headerItem()->text(1), QStringLiteral("Größe"));
    QCOMPARE(tabs->tabText(0), QStringLiteral("Allgemein"));
    QCOMPARE(tabs->tabToolTip(0), QStringLiteral("Grundeinstellungen"));
}

void TstSwitching::locales()
{
    TForm2 form;
    TvxLocaleSettings *settings = TvxLocaleSettings::instance();
    const QString before = settings->value(TvxLocaleSettings::ThousandSeparator);
    form.vx->Locales()->replace(1, QStringLiteral("Thousand Separator\t,\t. \t"));
    form.vx->Locales()->replace(0, QStringLiteral("Currency String\t$\tEUR\t"));
    form.vx->SetActLang(2);
    QCOMPARE(settings->value(TvxLocaleSettings::ThousandSeparator), before);

    QSignalSpy spy(settings, &TvxLocaleSettings::changed);
    form.vx->SetChangeLocales(true);
    form.vx->ChangeLanguage();
    QCOMPARE(settings->value(TvxLocaleSettings::ThousandSeparator), QStringLiteral("."));
    QCOMPARE(settings->value(TvxLocaleSettings::CurrencyString), QStringLiteral("EUR"));
    QVERIFY(spy.count() >= 2);

    // A locale item listed as not to translate keeps its value.
    settings->resetFromSystem();
    form.vx->SetDoNotList({QStringLiteral("currency string")});
    form.vx->ChangeLanguage();
    QCOMPARE(settings->value(TvxLocaleSettings::CurrencyString), form.vx->savedLocale().at(0));
    QCOMPARE(settings->value(TvxLocaleSettings::ThousandSeparator), QStringLiteral("."));
    settings->resetFromSystem();
}

void TstSwitching::doNotTranslate()
{
    TForm2 form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tree"));
    tree->setHeaderLabels({QStringLiteral("Name")});
    form.vx->BuildList();
    form.translate(stCaptions, QStringLiteral("Button1"), QStringLiteral("Ja"));
    form.translate(stFonts, QStringLiteral("Button1"), QStringLiteral("Serif"));
    form.translate(stCollections, QStringLiteral("tree.Columns[0].Caption"), QStringLiteral("Titel"));
    const QString family = form.button->font().family();
    form.vx->SetDoNotList({QStringLiteral("button1"), QStringLiteral("TREE")});
    form.vx->SetActLang(2);
    QCOMPARE(form.button->text(), QStringLiteral("Yes"));
    QCOMPARE(form.button->font().family(), family);
    QCOMPARE(tree->headerItem()->text(0), QStringLiteral("Name"));
}

void TstSwitching::charSetsReapplyFontsOnly()
{
    TForm2 form;
    form.translate(stCaptions, QStringLiteral("TForm2"), QStringLiteral("Hallo"));
    form.translate(stCaptions, QStringLiteral("Button1"), QStringLiteral("Ja"));
    form.vx->SetActLang(2);
    form.button->setText(QStringLiteral("typed"));
    form.setWindowTitle(QStringLiteral("typed"));

    QStringList charSets = form.vx->CharSets()->lines();
    for (QString &line : charSets) {
        if (line.startsWith(QLatin1String("Button1\t")))
            line = QStringLiteral("Button1\tDEFAULT_CHARSET\tRUSSIAN_CHARSET\t");
    }
    form.vx->setCharSets(charSets);
    QCOMPARE(form.windowTitle(), QStringLiteral("Hallo")); // the form's own texts always run
    QCOMPARE(form.button->text(), QStringLiteral("typed")); // other captions do not
    QCOMPARE(TvxPropAccess::readCharSet(form.button), 204);
    const QStringList cyrillic = QFontDatabase::families(QFontDatabase::Cyrillic);
    if (!cyrillic.isEmpty()) {
        bool covered = false;
        for (const QString &family : form.button->font().families())
            covered = covered || QFontDatabase::writingSystems(family).contains(QFontDatabase::Cyrillic);
        QVERIFY(covered);
    }
}

QTEST_MAIN(TstSwitching)
#include "tst_switching.moc"
