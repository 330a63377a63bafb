// Table look-ups: field extraction, text look-up with its fallbacks, the
// key index, the initial tables and the one-component-per-owner rule.
#include "vxcomp.h"
#include "vxdispatcher.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QMainWindow>

static const QChar T = QLatin1Char('\t');

static QString line(std::initializer_list<const char *> fields)
{
    QString s;
    bool first = true;
    for (const char *f : fields) {
        if (!first)
            s += T;
        s += QString::fromUtf8(f);
        first = false;
    }
    return s + T;
}

class TstLookup : public QObject
{
    Q_OBJECT
private slots:
    void extractWord_data();
    void extractWord();
    void getTextFollowsActiveLanguageAndDefault();
    void keysIgnoreCaseAndFirstLineWins();
    void replaceStringValue();
    void indexFollowsTableChanges();
    void indexMatchesLinearSearchThroughChanges();
    void addAndDeleteAgainstLinearSearch();
    void unicodeRoundTrips();
    void initialTables();
    void onePerOwner();
    void loadedCompletesDialogs();
    void externalStringsThroughDispatcher();
};

void TstLookup::extractWord_data()
{
    QTest::addColumn<QString>("s");
    QTest::addColumn<int>("n");
    QTest::addColumn<QString>("expected");
    const QString k = QStringLiteral("K\t\tc\t");
    QTest::newRow("adjacent delimiters enclose an empty field") << k << 2 << QString();
    QTest::newRow("field after an empty one") << k << 3 << QStringLiteral("c");
    QTest::newRow("trailing delimiter adds no field") << k << 4 << QString();
    QTest::newRow("leading delimiter skipped before field 1") << QStringLiteral("\tK\tx") << 1 << QStringLiteral("K");
    QTest::newRow("key is field 1") << k << 1 << QStringLiteral("K");
    QTest::newRow("no delimiter") << QStringLiteral("whole") << 1 << QStringLiteral("whole");
    QTest::newRow("beyond the end") << QStringLiteral("a\tb") << 7 << QString();
    QTest::newRow("empty string") << QString() << 1 << QString();
    QTest::newRow("zero field") << QStringLiteral("a\tb") << 0 << QString();
}

void TstLookup::extractWord()
{
    QFETCH(QString, s);
    QFETCH(int, n);
    QFETCH(QString, expected);
    QCOMPARE(ExtractWord(n, s, T), expected);
    QCOMPARE(ExtractWord(n, s, QStringLiteral("\t;")), expected);
}

void TstLookup::getTextFollowsActiveLanguageAndDefault()
{
    QWidget form;
    TVexil vx(&form);
    vx.SetNumLang(2);
    vx.Strings()->setLines({line({"Greeting", "Hello", "Bonjour"}), line({"K", "", "x"}),
                            line({"F", "first", ""}), line({"7", "seven", "sept"})});
    vx.Loaded();

    QCOMPARE(vx.GetText(QStringLiteral("Greeting")), QStringLiteral("Hello"));
    QCOMPARE(vx.GetText(QStringLiteral("K")), QString());
    QCOMPARE(vx.GetTextOrDefault(QStringLiteral("K")), QString()); // the default is language 1 itself
    QCOMPARE(vx.GetTextbyInt(7), QStringLiteral("seven"));

    vx.SetActLang(2);
    QCOMPARE(vx.GetText(QStringLiteral("Greeting")), QStringLiteral("Bonjour"));
    QCOMPARE(vx.GetText(QStringLiteral("K")), QStringLiteral("x"));
    QCOMPARE(vx.GetTextOrDefault(QStringLiteral("K")), QStringLiteral("x"));
    QCOMPARE(vx.GetText(QStringLiteral("F")), QString());
    QCOMPARE(vx.GetTextOrDefault(QStringLiteral("F")), QStringLiteral("first"));
    QCOMPARE(vx.GetText(QStringLiteral("missing")), QString());

    QCOMPARE(vx.GetTextFromByIndex(vx.Strings(), 0, false), QStringLiteral("Bonjour"));
    QCOMPARE(vx.GetTextFromByIndex(vx.Strings(), 2, true), QStringLiteral("first"));
    QCOMPARE(vx.GetTextFromByIndex(vx.Strings(), -1, true), QString());
    QCOMPARE(vx.GetTextFromByIndex(vx.Strings(), 4, true), QString());
    QCOMPARE(vx.GetStringValue(vx.Strings(), QStringLiteral("greeting"), 1), QStringLiteral("Hello"));
    QCOMPARE(vx.GetStringValue(vx.Strings(), QStringLiteral("greeting"), 5), QString());
}

void TstLookup::keysIgnoreCaseAndFirstLineWins()
{
    TVexil vx;
    vx.SetNumLang(2);
    vx.Strings()->setLines({line({"Button1.Caption", "first", "premier"}),
                            line({"BUTTON1.CAPTION", "second", "deuxième"})});
    QCOMPARE(vx.GetText(QStringLiteral("button1.CAPTION")), QStringLiteral("first"));
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("button1.caption"), QStringLiteral("new"), 1);
    QCOMPARE(vx.Strings()->at(0), line({"Button1.Caption", "new", "premier"}));
    QCOMPARE(vx.Strings()->at(1), line({"BUTTON1.CAPTION", "second", "deuxième"}));
}

void TstLookup::replaceStringValue()
{
    TVexil vx;
    vx.Strings()->setLines({QStringLiteral("K\ta\tb\t"), QStringLiteral("L\ta"), QStringLiteral("M\t\t\t")});
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("K"), QStringLiteral("c"), 2);
    QCOMPARE(vx.Strings()->at(0), QStringLiteral("K\ta\tc\t"));
    // Without a closing delimiter the text is dropped, not replaced.
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("L"), QStringLiteral("z"), 1);
    QCOMPARE(vx.Strings()->at(1), QStringLiteral("L"));
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("M"), QStringLiteral("two"), 2);
    QCOMPARE(vx.Strings()->at(2), QStringLiteral("M\t\ttwo\t"));
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("nothing"), QStringLiteral("x"), 1);
    QCOMPARE(vx.Strings()->count(), 3);
}

void TstLookup::indexFollowsTableChanges()
{
    TVexil vx;
    TvxStringList *s = vx.Strings();
    s->setLines({line({"A", "a"}), line({"B", "b"})});
    QCOMPARE(vx.GetText(QStringLiteral("B")), QStringLiteral("b"));
    s->append(line({"C", "c"}));
    QCOMPARE(vx.GetText(QStringLiteral("c")), QStringLiteral("c"));
    s->replace(1, line({"D", "d"})); // key changed in place
    QCOMPARE(vx.GetText(QStringLiteral("B")), QString());
    QCOMPARE(vx.GetText(QStringLiteral("D")), QStringLiteral("d"));
    s->removeAt(0);
    QCOMPARE(vx.GetText(QStringLiteral("A")), QString());
    s->insert(0, line({"C", "shadow"})); // a new first line for an old key wins
    QCOMPARE(vx.GetText(QStringLiteral("C")), QStringLiteral("shadow"));
    QVERIFY(vx.AddString(QStringLiteral("C"), {QStringLiteral("moved")}));
    QCOMPARE(vx.GetText(QStringLiteral("C")), QStringLiteral("c")); // the other C line is first now
}

// What the index must answer, found the slow way.
static int firstKeyLine(const QStringList &lines, const QString &key)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (ExtractWord(1, lines.at(i), T).toUpper() == key.toUpper())
            return i;
    }
    return -1;
}

static int firstExactLine(const QStringList &lines, const QString &key)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i).startsWith(key + T))
            return i;
    }
    return -1;
}

void TstLookup::indexMatchesLinearSearchThroughChanges()
{
    // Random appends, insertions, removals and replacements over few keys
    // (so most have duplicates), in several spellings, with lines that
    // start with the delimiter or have none. After every change the list
    // and both key searches must agree with a plain list searched line by
    // line: positions shift, and the next line of a key takes over when its
    // first line goes.
    const QStringList keys{QStringLiteral("K1"),     QStringLiteral("k1"),      QStringLiteral("K2"),
                           QStringLiteral("Key"),    QStringLiteral("KEY"),     QStringLiteral("straße"),
                           QStringLiteral("STRASSE"), QStringLiteral("Привет"), QStringLiteral("ПРИВЕТ"),
                           QString()};
    QRandomGenerator rng(20240611);
    auto randomLine = [&](int n) {
        const QString key = keys.at(int(rng.bounded(keys.size())));
        switch (rng.bounded(8)) {
        case 0:
            return T + key + T + QString::number(n) + T; // key after a leading delimiter
        case 1:
            return key; // no delimiter at all
        default:
            return key + T + QString::number(n) + T;
        }
    };
    TvxStringList list;
    QStringList model;
    for (int step = 0; step < 4000; ++step) {
        const int op = int(rng.bounded(10));
        const int size = int(model.size());
        if (op < 3 || size < 3) {
            const QString l = randomLine(step);
            list.append(l);
            model.append(l);
        } else if (op < 6) {
            const int i = int(rng.bounded(size));
            list.removeAt(i);
            model.removeAt(i);
        } else if (op == 6) {
            const int i = int(rng.bounded(size + 1));
            const QString l = randomLine(step);
            list.insert(i, l);
            model.insert(i, l);
        } else if (op == 7) {
            const int i = int(rng.bounded(size));
            const QString l = rng.bounded(2) ? randomLine(step) : ExtractWord(1, model.at(i), T) + T + QStringLiteral("same key") + T;
            list.replace(i, l);
            model.replace(i, l);
        } else if (op == 8 && rng.bounded(20) == 0) {
            QCOMPARE(list.lines(), model); // closes the holes
        }
        QCOMPARE(list.count(), model.size());
        if (step % 7 == 0 && !model.isEmpty()) {
            const int i = int(rng.bounded(int(model.size())));
            QCOMPARE(list.at(i), model.at(i));
        }
        for (const QString &key : keys) {
            const int found = list.indexOfKey(key, T);
            QCOMPARE(found, firstKeyLine(model, key));
            if (found >= 0) { // fields are read from the line just found
                for (int n = 1; n <= 3; ++n)
                    QCOMPARE(list.field(found, n, T), ExtractWord(n, model.at(found), T));
            }
            QCOMPARE(list.indexOfExactKey(key, T), firstExactLine(model, key));
        }
    }
    QCOMPARE(list.lines(), model);
    // The whole list removed line by line from the front, then refilled.
    while (list.count() > 0) {
        list.removeAt(0);
        model.removeAt(0);
        QCOMPARE(list.indexOfKey(QStringLiteral("k1"), T), firstKeyLine(model, QStringLiteral("k1")));
    }
    QVERIFY(list.lines().isEmpty());
    list.append(line({"K1", "again"}));
    QCOMPARE(list.indexOfKey(QStringLiteral("K1"), T), 0);
    QCOMPARE(list.at(0), line({"K1", "again"}));
}

void TstLookup::addAndDeleteAgainstLinearSearch()
{
    // AddString moves an identifier's first exact line to the end and
    // DeleteString removes it; GetText meanwhile finds the first line of the
    // key in any letter case. Checked against a plain list after each call.
    TVexil vx;
    vx.SetNumLang(2);
    QStringList model;
    for (int i = 0; i < 300; ++i) {
        const QString l = QStringLiteral("IDS_%1\\ta%1\\tb%1\\t").arg(i % 250).replace(QStringLiteral("\\t"), T);
        model << l;
    }
    model << line({"ids_7", "lower"});
    vx.Strings()->setLines(model);
    QRandomGenerator rng(7);
    for (int step = 0; step < 3000; ++step) {
        const QString id = (rng.bounded(10) == 0 ? QStringLiteral("ids_%1") : QStringLiteral("IDS_%1")).arg(rng.bounded(260));
        if (rng.bounded(2)) {
            const QString text = QString::number(step);
            QVERIFY(vx.AddString(id, {text, text + QLatin1Char('x')}));
            const int i = firstExactLine(model, id);
            if (i >= 0)
                model.removeAt(i);
            model << id + T + text + T + text + QLatin1Char('x') + T;
        } else {
            const int i = firstExactLine(model, id);
            QCOMPARE(vx.DeleteString(id), i >= 0);
            if (i >= 0)
                model.removeAt(i);
        }
        QCOMPARE(vx.Strings()->count(), model.size());
        const QString probe = QStringLiteral("Ids_%1").arg(rng.bounded(260));
        const int first = firstKeyLine(model, probe);
        QCOMPARE(vx.GetText(probe), first >= 0 ? ExtractWord(2, model.at(first), T) : QString());
    }
    QCOMPARE(vx.Strings()->lines(), model);
}

void TstLookup::unicodeRoundTrips()
{
    TVexil vx;
    vx.SetNumLang(3);
    const QString ru = QStringLiteral("Привет, мир");
    const QString ja = QStringLiteral("こんにちは世界");
    const QString he = QStringLiteral("שלום עולם");
    vx.AddString(QStringLiteral("Hello"), {ru, ja, he});
    vx.SetActLang(2);
    QCOMPARE(vx.GetText(QStringLiteral("hello")), ja);
    vx.ReplaceStringValue(vx.Strings(), QStringLiteral("HELLO"), QStringLiteral("مرحبا"), 3);
    vx.SetLangDelim(QChar(0x2016)); // a delimiter outside Latin-1
    vx.SetActLang(3);
    QCOMPARE(vx.GetText(QStringLiteral("Hello")), QStringLiteral("مرحبا"));
    QCOMPARE(vx.GetStringValue(vx.Strings(), QStringLiteral("Hello"), 1), ru);
}

void TstLookup::initialTables()
{
    TVexil vx;
    QCOMPARE(vx.DlgsCaptions()->count(), 79);
    QCOMPARE(vx.DlgsCaptions()->at(0), QStringLiteral("Warning\tWarning\t"));
    QVERIFY(vx.DlgsCaptions()->lines().contains(QStringLiteral("No To All\tN&o To All\t")));
    QVERIFY(vx.DlgsCaptions()->lines().contains(QStringLiteral("|Solid\t|S&olid\t")));
    QCOMPARE(vx.DlgsCaptions()->at(78), QStringLiteral("Preview\tPreview\t"));
    QCOMPARE(vx.Locales()->count(), 11);
    QVERIFY(vx.Locales()->at(0).startsWith(QStringLiteral("Currency String\t")));
    QVERIFY(vx.Locales()->at(10).startsWith(QStringLiteral("Long Time Format\t")));
    QCOMPARE(vx.LangNames()->lines(), QStringList{QStringLiteral("LANGUAGE N1")});
    QCOMPARE(vx.Language(), QStringLiteral("LANGUAGE N1"));
    QCOMPARE(vx.Version(), QStringLiteral("v4.9"));
    vx.SetVersion(QStringLiteral("v9"));
    QCOMPARE(vx.Version(), QStringLiteral("v4.9"));
    QCOMPARE(vx.GetTextFrom(vx.DlgsCaptions(), QStringLiteral("yes"), false), QStringLiteral("&Yes"));
}

void TstLookup::onePerOwner()
{
    QMainWindow form;
    auto *central = new QWidget(&form);
    form.setCentralWidget(central);
    auto *first = new TVexil(central);
    QCOMPARE(first->owner(), &form);
    try {
        new TVexil(&form);
        QFAIL("a second component was created");
    } catch (const ELanguageError &) {
        QFAIL("wrong exception class");
    } catch (const EVexilError &e) {
        QCOMPARE(e.message(), QStringLiteral("Only one TvxCustomLang component per Form/DataModule allowed!"));
    }
    delete first;
    TVexil again(&form); // the owner is free again once the first is gone
    QCOMPARE(TvxCustomLang::componentOf(&form), &again);
}

void TstLookup::loadedCompletesDialogs()
{
    QWidget form;
    TVexil vx(&form);
    QVERIFY(vx.isLoading());
    QStringList fifteen = vx.DlgsCaptions()->lines().mid(0, 15);
    vx.setDlgsCaptions(fifteen);
    vx.Loaded();
    QVERIFY(!vx.isLoading());
    QCOMPARE(vx.DlgsCaptions()->count(), 79);
    QCOMPARE(vx.DlgsCaptions()->at(15), QStringLiteral("Open\t&Open\t"));

    QWidget other;
    TVexil ext(&other);
    ext.setOptions(loUseExtCommonStrings);
    QCoreApplication::processEvents(); // the event loop running ends loading too
    QVERIFY(!ext.isLoading());
    QCOMPARE(ext.DlgsCaptions()->count(), 0);
    QCOMPARE(ext.Locales()->count(), 0);
}

void TstLookup::externalStringsThroughDispatcher()
{
    TVexilDispatcher dispatcher;
    QWidget f1, f2;
    TVexil a(&f1), b(&f2);
    a.Loaded();
    b.Loaded();
    b.SetNumLang(2);
    b.AddString(QStringLiteral("Shared"), {QStringLiteral("one"), QStringLiteral("eins")});
    a.SetOptions(loUseExtUDStrings);
    QCOMPARE(a.GetText(QStringLiteral("Shared")), QString()); // no dispatcher yet

    a.SetLangDispatcher(&dispatcher);
    b.SetLangDispatcher(&dispatcher);
    dispatcher.SetLangNames({QStringLiteral("english"), QStringLiteral("german")});
    QCOMPARE(a.GetText(QStringLiteral("Shared")), QStringLiteral("one"));
    dispatcher.SetActiveLanguage(2);
    QCOMPARE(a.GetText(QStringLiteral("Shared")), QStringLiteral("eins"));

    // The first component with strings is the searching one: the search ends.
    a.AddString(QStringLiteral("Local"), {QStringLiteral("l")});
    QCOMPARE(a.GetText(QStringLiteral("Shared")), QString());
    QCOMPARE(a.GetText(QStringLiteral("Local")), QString());
    QCOMPARE(a.GetTextOrDefault(QStringLiteral("Local")), QStringLiteral("l"));

    // Dialog texts come from the first component whose table is not empty.
    a.SetOptions(loUseExtCommonStrings);
    a.DlgsCaptions()->clear();
    b.DlgsCaptions()->replace(4, QStringLiteral("Yes\t&Yes\t&Ja\t"));
    QCOMPARE(a.GetTextFrom(a.DlgsCaptions(), QStringLiteral("Yes"), true), QStringLiteral("&Ja"));
}

QTEST_MAIN(TstLookup)
#include "tst_lookup.moc"
