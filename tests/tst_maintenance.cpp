// Table maintenance: languages, names, delimiter, application strings and
// the errors that leave the component as it was.
#include "vxcomp.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QPushButton>

class TstMaintenance : public QObject
{
    Q_OBJECT
private slots:
    void languageCountAndNames();
    void languageByName();
    void errorsLeaveStateUnchanged();
    void delimiterChangeRewritesEveryTable();
    void delimiterWhileLoadingOnlyStores();
    void addAndDeleteStrings();
    void optionsAtDesignTime();
    void tablesByTypeAndUtilities();
};

void TstMaintenance::languageCountAndNames()
{
    TVexil vx;
    vx.Strings()->setLines({QStringLiteral("A\t1\t2\t3\t")});
    vx.SetNumLang(3);
    QCOMPARE(vx.LangNames()->lines(),
             (QStringList{QStringLiteral("LANGUAGE N1"), QStringLiteral("LANGUAGE N2"), QStringLiteral("LANGUAGE N3")}));
    vx.SetActLang(3);
    vx.SetNumLang(1);
    QCOMPARE(vx.LangNames()->lines(), QStringList{QStringLiteral("LANGUAGE N1")});
    QCOMPARE(vx.Strings()->at(0), QStringLiteral("A\t1\t2\t3\t")); // texts of removed languages stay
    QCOMPARE(vx.ActiveLanguage(), 3);                              // and the active language is not adjusted

    TVexil names;
    names.SetNumLang(2);
    names.SetLangNames({QStringLiteral("english"), QStringLiteral("german")});
    QCOMPARE(names.LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(names.Language(), QStringLiteral("ENGLISH"));
}

void TstMaintenance::languageByName()
{
    QWidget form;
    auto *button = new QPushButton(QStringLiteral("Yes"), &form);
    button->setObjectName(QStringLiteral("Button1"));
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(2);
    vx.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    vx.BuildList();
    vx.ReplaceStringValue(vx.Captions(), QStringLiteral("Button1"), QStringLiteral("Ja"), 2);
    vx.SetLanguage(QStringLiteral("german"));
    QCOMPARE(vx.Language(), QStringLiteral("german"));
    QCOMPARE(vx.ActiveLanguage(), 2);
    QCOMPARE(button->text(), QStringLiteral("Ja"));
}

void TstMaintenance::errorsLeaveStateUnchanged()
{
    TVexil vx;
    vx.SetNumLang(2);
    vx.SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
    try {
        vx.SetNumLang(0);
        QFAIL("no exception");
    } catch (const ELanguageError &e) {
        QCOMPARE(e.message(), QStringLiteral("0 - is not a valid property value !\rValue must be more than ZERO !"));
    }
    QCOMPARE(vx.NumOfLanguages(), 2);
    try {
        vx.SetLanguage(QStringLiteral("French"));
        QFAIL("no exception");
    } catch (const ELanguageError &e) {
        QCOMPARE(e.message(), QStringLiteral("Language name shall be included in LangNames property!"));
    }
    QCOMPARE(vx.Language(), QStringLiteral("ENGLISH"));
    QCOMPARE(vx.ActiveLanguage(), 1);
    QVERIFY_THROWS_EXCEPTION(EListError, vx.SetLangNames(QStringList{}));
    QCOMPARE(vx.LangNames()->count(), 2);
}

void TstMaintenance::delimiterChangeRewritesEveryTable()
{
    TVexil vx;
    vx.setCaptions({QStringLiteral("Button1\tOK\tJa\t")});
    vx.Strings()->setLines({QStringLiteral("S\tinner\ttab\t")});
    vx.SetDoNotList({QStringLiteral("KEEP")});
    vx.SetLangDelim(QLatin1Char('|'));
    QCOMPARE(vx.LangDelim(), QLatin1Char('|'));
    QCOMPARE(vx.Captions()->at(0), QStringLiteral("Button1|OK|Ja|"));
    QCOMPARE(vx.Strings()->at(0), QStringLiteral("S|inner|tab|"));
    QCOMPARE(vx.DlgsCaptions()->at(0), QStringLiteral("Warning|Warning|"));
    QVERIFY(vx.Locales()->at(0).startsWith(QStringLiteral("Currency String|")));
    QCOMPARE(vx.DoNotTranslate()->lines(), QStringList{QStringLiteral("KEEP")});
    QCOMPARE(vx.GetText(QStringLiteral("s")), QStringLiteral("inner")); // the index follows the delimiter
}

void TstMaintenance::delimiterWhileLoadingOnlyStores()
{
    QWidget form;
    TVexil vx(&form);
    QVERIFY(vx.isLoading());
    vx.setStrings({QStringLiteral("S;text;")});
    vx.setLangDelim(QLatin1Char(';'));
    QCOMPARE(vx.Strings()->at(0), QStringLiteral("S;text;"));
    QCOMPARE(vx.DlgsCaptions()->at(0), QStringLiteral("Warning\tWarning\t")); // not rewritten
    QCOMPARE(vx.GetText(QStringLiteral("S")), QStringLiteral("text"));
}

void TstMaintenance::addAndDeleteStrings()
{
    TVexil vx;
    vx.SetNumLang(2);
    QVERIFY(vx.AddString(QStringLiteral("IDS_A"), {QStringLiteral("a")}));
    QVERIFY(vx.AddString(QStringLiteral("IDS_B"), {QStringLiteral("b"), QStringLiteral("B"), QStringLiteral("extra")}));
    QVERIFY(vx.AddString(QStringLiteral("IDS_A"), {QStringLiteral("a1"), QStringLiteral("a2")}));
    QCOMPARE(vx.Strings()->lines(),
             (QStringList{QStringLiteral("IDS_B\tb\tB\textra\t"), QStringLiteral("IDS_A\ta1\ta2\t")}));
    QVERIFY(!vx.DeleteString(QStringLiteral("ids_a")));
    QVERIFY(vx.DeleteString(QStringLiteral("IDS_A")));
    QVERIFY(!vx.DeleteString(QStringLiteral("IDS_A")));
    QCOMPARE(vx.Strings()->count(), 1);

    // The empty identifier is the first line that begins with the delimiter,
    // also when a later one has an empty first field.
    vx.Strings()->setLines({QStringLiteral("\tfirst\t"), QStringLiteral("\t\tsecond\t"), QStringLiteral("K\tk\t")});
    QVERIFY(vx.DeleteString(QString()));
    QCOMPARE(vx.Strings()->at(0), QStringLiteral("\t\tsecond\t"));
    vx.Strings()->insert(0, QStringLiteral("\tfirst\t"));
    vx.AddString(QString(), {QStringLiteral("new")});
    QCOMPARE(vx.Strings()->lines(), (QStringList{QStringLiteral("\t\tsecond\t"), QStringLiteral("K\tk\t"),
                                                 QStringLiteral("\tnew\t")}));
    vx.Strings()->clear();
    vx.AddString(QStringLiteral("IDS_B"), {QStringLiteral("b")});
    // An identifier that only prefixes another is not that one.
    vx.AddString(QStringLiteral("IDS"), {QStringLiteral("short")});
    QCOMPARE(vx.Strings()->count(), 2);
}

void TstMaintenance::optionsAtDesignTime()
{
    TVexil runTime;
    runTime.SetOptions(loUseExtCommonStrings);
    QCOMPARE(runTime.DlgsCaptions()->count(), 79);
    TVexil design;
    design.setDesigning(true);
    design.SetOptions(loUseExtCommonStrings | loUseExtUDStrings);
    QCOMPARE(design.DlgsCaptions()->count(), 0);
    QCOMPARE(design.Locales()->count(), 0);
}

void TstMaintenance::tablesByTypeAndUtilities()
{
    TVexil vx;
    QCOMPARE(vx.GetPropListByType(stCaptions), vx.Captions());
    QCOMPARE(vx.GetPropListByType(stDlgsCaptions), vx.DlgsCaptions());
    QCOMPARE(vx.GetPropListByType(stListView_TreeView_Items), nullptr);
    TvxCustomLang plain;
    QCOMPARE(plain.GetPropListByType(stCaptions), nullptr); // the base publishes no table

    QStringList names{QStringLiteral("junk")};
    GetIniNames(names);
    QCOMPARE(names.size(), 12);
    QCOMPARE(names.first(), QStringLiteral("Captions"));
    QCOMPARE(names.at(stOtherStrings), QStringLiteral("Other"));
    QCOMPARE(names.last(), QStringLiteral("ListView_TreeView_Items"));

    const QString source = QStringLiteral("Secret текст");
    QCOMPARE(XorString(QString(), source), source);
    const QString once = XorString(QStringLiteral("key"), source);
    QVERIFY(once != source);
    QCOMPARE(XorString(QStringLiteral("key"), once), source);
    QCOMPARE(XorString(QStringLiteral("a"), QStringLiteral("a")), QString(QChar(0)));
}

QTEST_MAIN(TstMaintenance)
#include "tst_maintenance.moc"
