// The expert's source scan on source text: which literals are found, the
// calls that replace them, the review list's operations, the const-section
// rewrite and the unused-identifier check.
#include "vxcomp.h"
#include "vxsourcescan.h"
#include "vxstringlist.h"

#include <QtTest>

using namespace Vexil::Expert;

namespace {

const QString kPrefix = QStringLiteral("ui->Vexil1");

QStringList texts(const TvxScanResult &r)
{
    QStringList out;
    for (const TvxFoundString &row : r.rows)
        out << row.text;
    return out;
}

QStringList ids(const QList<TvxFoundString> &rows)
{
    QStringList out;
    for (const TvxFoundString &row : rows)
        out << row.id;
    return out;
}

QString unit(const QString &body)
{
    return QStringLiteral("#include \"form1.h\"\n\nvoid Form1::f()\n{\n") + body + QStringLiteral("\n}\n");
}

} // namespace

class tst_ExpertScan : public QObject
{
    Q_OBJECT
private slots:
    void literalsFound_data();
    void literalsFound();
    void scanStartNeedsBraceInColumnOne();
    void replacementCall();
    void excerptLength_data();
    void excerptLength();
    void adjacentLiteralsJoinWithPlus();
    void equalTextsShareIdentifier();
    void rewriteReplacesLiteralsAsWritten();
    void tableEntriesInTextOrder();
    void tableEntriesReachComponent();
    void tabInTextKeepsTableFields();
    void addToStringsReplacesLikeAddString();
    void marks();
    void shiftClickWithSeveralMarksFails();
    void deleteRows();
    void startId();
    void editIdentifierRebuildsCall();
    void castToCharPointer();
    void castKeepsJoinOutside();
    void constSection();
    void constSectionContinuedAndEmpty();
    void constValue_data();
    void constValue();
    void constSectionTwiceAddsTwoCalls();
    void constSectionNothingFound();
    void ensureMethods();
    void unusedIdentifiers_data();
    void unusedIdentifiers();
};

void tst_ExpertScan::literalsFound_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("plain") << "    setText(\"Hello\");" << QStringList{"Hello"};
    QTest::newRow("escaped quote does not end it")
        << "    ShowMessage(\"It\\\"s\");" << QStringList{"It\"s"};
    QTest::newRow("escapes decoded") << "    f(\"a\\\\b\\n\\r\\tc\\x41\");"
                                     << QStringList{QStringLiteral("a\\b\n\r\tc\\x41")};
    QTest::newRow("encoding prefixes") << "    f(L\"w\", u\"x\", U\"y\", u8\"z\");" << QStringList{"w", "x", "y", "z"};
    QTest::newRow("raw string is not a literal") << "    f(R\"(a \"b\" c)\", \"d\");" << QStringList{"d"};
    QTest::newRow("raw string over lines") << "    f(R\"x(a\n\"b\"\n)x\"); g(\"c\");" << QStringList{"c"};
    QTest::newRow("quote in a character literal") << "    if (c == '\"' || c == '\\\"') f(\"q\");"
                                                  << QStringList{"q"};
    QTest::newRow("empty literal never") << "    f(\"\", \"x\");" << QStringList{"x"};
    QTest::newRow("one character") << "    f(\"x\");" << QStringList{"x"};
    QTest::newRow("comment not recognised") << "    // say \"hi\"\n    /* \"there\" */" << QStringList{"hi", "there"};
    QTest::newRow("preprocessor line not recognised") << "#define GREETING \"hey\"" << QStringList{"hey"};
    // A literal over a line end is not found; its closing quote opens the next find.
    QTest::newRow("literal over a line end not found") << "    f(\"abc\n    def\"); g(\"ok\");" << QStringList{"); g("};
    QTest::newRow("already a look-up") << "    f(ui->Vexil1->GetText(\"IDS_3\"));" << QStringList{};
    QTest::newRow("look-up in other case") << "    f(x->gettext(\"IDS_3\"));" << QStringList{};
    QTest::newRow("blank after the parenthesis is found again")
        << "    f(ui->Vexil1->GetText( \"IDS_3\"));" << QStringList{"IDS_3"};
    QTest::newRow("excerpt of an earlier call is found again")
        << "    f(ui->Vexil1->GetText(\"IDS_3\" /* \"Hello\" */ ));" << QStringList{"Hello"};
}

void tst_ExpertScan::literalsFound()
{
    QFETCH(QString, body);
    QFETCH(QStringList, expected);
    const TvxScanResult r = scanStatements(unit(body), kPrefix, 0);
    QCOMPARE(texts(r), expected);
    QCOMPARE(r.ok(), !expected.isEmpty());
    if (expected.isEmpty())
        QCOMPARE(r.message, QStringLiteral("There no strings in source!"));
}

void tst_ExpertScan::scanStartNeedsBraceInColumnOne()
{
    // Before the first column-1 brace nothing is scanned; an indented brace does not count.
    const QString indented = QStringLiteral("#include \"a.h\"\nvoid f() {\n    g(\"x\");\n  }\n");
    TvxScanResult r = scanStatements(indented, kPrefix, 0);
    QVERIFY(r.rows.isEmpty());
    QCOMPARE(r.message, QStringLiteral("There no strings in source!"));

    const QString braceLine = QStringLiteral("#include \"a.h\"\nvoid f()\n{ g(\"same line\");\n    g(\"x\");\n}\n");
    r = scanStatements(braceLine, kPrefix, 0);
    QCOMPARE(texts(r), QStringList{"x"});

    r = scanStatements(QString(), kPrefix, 0);
    QVERIFY(r.rows.isEmpty());
    QVERIFY(r.message.isEmpty()); // an empty unit ends the scan silently
}

void tst_ExpertScan::replacementCall()
{
    const QString src = unit(QStringLiteral("    QMessageBox::information(this, QString(), \"Hello, world of many people\");"));
    TvxScanResult r = scanStatements(src, callPrefix("Form1", "Vexil1", true), 7);
    QCOMPARE(r.rows.size(), 1);
    const TvxFoundString &row = r.rows.first();
    QCOMPARE(row.id, QStringLiteral("IDS_7"));
    QCOMPARE(row.replacement, QStringLiteral("ui->Vexil1->GetText(\"IDS_7\" /* \"Hello, world of...\" */ )"));
    QCOMPARE(row.sourceLine, QStringLiteral("    QMessageBox::information(this, QString(), \"Hello, world of many people\");"));

    // Another unit looks the form's component up at run time.
    r = scanStatements(src, callPrefix("Form1", "Vexil1", false), 0);
    QCOMPARE(r.rows.first().replacement,
             QStringLiteral("VEXIL_FORM(Form1)->GetText(\"IDS_0\" /* \"Hello, world of...\" */ )"));
}

void tst_ExpertScan::excerptLength_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("expected");
    QTest::newRow("exactly 15 whole") << "123456789012345" << "123456789012345";
    QTest::newRow("16 cut") << "1234567890123456" << "123456789012345...";
    QTest::newRow("escapes as written") << "a\\\"b" << "a\\\"b";
    QTest::newRow("cut escape dropped") << "12345678901234\\\"xyz" << "12345678901234...";
    QTest::newRow("never closes the comment") << "a*/b" << "a* /b";
}

void tst_ExpertScan::excerptLength()
{
    QFETCH(QString, written);
    QFETCH(QString, expected);
    QCOMPARE(excerpt(written), expected);
}

void tst_ExpertScan::adjacentLiteralsJoinWithPlus()
{
    const QString src = unit(QStringLiteral("    label->setText(\"Line\\n\" \"two\"\n                   u8\"three\");"));
    const TvxScanResult r = scanStatements(src, kPrefix, 0);
    QCOMPARE(texts(r), (QStringList{"Line\n", "two", "three"}));
    QVERIFY(r.rows.at(0).replacement.endsWith(QStringLiteral(" */ ) + ")));
    QVERIFY(r.rows.at(1).replacement.endsWith(QStringLiteral(" */ ) + ")));
    QVERIFY(r.rows.at(2).replacement.endsWith(QStringLiteral(" */ )")));
    const QString out = rewriteStatements(src, r.rows);
    QVERIFY(out.contains(QStringLiteral(
        "label->setText(ui->Vexil1->GetText(\"IDS_0\" /* \"Line\\n\" */ ) +  ui->Vexil1->GetText(\"IDS_1\" /* \"two\" */ ) + \n"
        "                   ui->Vexil1->GetText(\"IDS_2\" /* \"three\" */ ));")));
}

void tst_ExpertScan::equalTextsShareIdentifier()
{
    const QString src = unit(QStringLiteral("    f(\"Save\");\n    g(\"Open\");\n    h(\"Save\");\n    k(\"save\");"));
    const TvxScanResult r = scanStatements(src, kPrefix, 3);
    QCOMPARE(ids(r.rows), (QStringList{"IDS_3", "IDS_4", "IDS_3", "IDS_6"}));
    QCOMPARE(r.rows.at(2).replacement, r.rows.at(0).replacement);
}

void tst_ExpertScan::rewriteReplacesLiteralsAsWritten()
{
    const QString src = unit(QStringLiteral("    ShowMessage(\"It\\\"s\"); f(L\"wide\");"));
    TvxScanResult r = scanStatements(src, kPrefix, 0);
    QCOMPARE(r.rows.size(), 2);
    QCOMPARE(r.rows.at(0).length, 7); // both quotes and the five characters between
    const QString out = rewriteStatements(src, r.rows);
    QCOMPARE(out, unit(QStringLiteral("    ShowMessage(ui->Vexil1->GetText(\"IDS_0\" /* \"It\\\"s\" */ )); "
                                      "f(ui->Vexil1->GetText(\"IDS_1\" /* \"wide\" */ ));")));
    // A second scan finds only the excerpts, never the identifiers.
    r = scanStatements(out, kPrefix, 2);
    QCOMPARE(texts(r), (QStringList{"It\"s", "wide"}));

    // A deleted row keeps its literal.
    TvxFoundList list(scanStatements(src, kPrefix, 0).rows);
    list.deleteRow(1);
    QCOMPARE(rewriteStatements(src, list.rows()),
             unit(QStringLiteral("    ShowMessage(\"It\\\"s\"); f(ui->Vexil1->GetText(\"IDS_1\" /* \"wide\" */ ));")));
}

void tst_ExpertScan::tableEntriesInTextOrder()
{
    QString body;
    for (int k = 0; k < 11; ++k)
        body += QStringLiteral("    f(\"t%1\");\n").arg(k);
    body += QStringLiteral("    f(\"t3\");");
    const TvxScanResult r = scanStatements(unit(body), kPrefix, 0);
    const TvxStringEntries entries = stringEntries(r.rows);
    QCOMPARE(entries.size(), 11); // the repeated text once
    QCOMPARE(entries.at(0), qMakePair(QStringLiteral("IDS_0"), QStringLiteral("t0")));
    QCOMPARE(entries.at(1), qMakePair(QStringLiteral("IDS_1"), QStringLiteral("t1")));
    QCOMPARE(entries.at(2), qMakePair(QStringLiteral("IDS_10"), QStringLiteral("t10")));
    QCOMPARE(entries.at(10), qMakePair(QStringLiteral("IDS_9"), QStringLiteral("t9")));
}

void tst_ExpertScan::tableEntriesReachComponent()
{
    QWidget form;
    form.setObjectName(QStringLiteral("Form1"));
    TVexil vexil(&form);
    vexil.setObjectName(QStringLiteral("Vexil1"));
    vexil.AddString(QStringLiteral("OLD"), {QStringLiteral("x")});

    const QString src = unit(QStringLiteral("    f(\"Two\\nlines\");\n    g(\"Two\");"));
    const TvxScanResult r = scanStatements(src, kPrefix, vexil.Strings()->count());
    QCOMPARE(ids(r.rows), (QStringList{"IDS_1", "IDS_2"}));
    for (const auto &entry : stringEntries(r.rows))
        QVERIFY(vexil.AddString(entry.first, {entry.second}));
    QCOMPARE(vexil.GetText("IDS_1"), QStringLiteral("Two\nlines"));
    QCOMPARE(vexil.GetText("IDS_2"), QStringLiteral("Two"));

    // The run-time look-up used outside the form's unit.
    QCOMPARE(VEXIL_FORM(Form1), static_cast<TvxCustomLang *>(&vexil));
    TvxCustomLang *missing = VEXIL_FORM(NoSuchForm);
    QVERIFY(missing);
    QVERIFY(missing != &vexil);
    QCOMPARE(missing->GetText("IDS_1"), QString());
}

void tst_ExpertScan::tabInTextKeepsTableFields()
{
    // A decoded tab would split the table line at the component's tab
    // delimiter: it goes in as the escape it was written with.
    QWidget form;
    TVexil vexil(&form);
    vexil.SetNumLang(2);
    const TvxScanResult r = scanStatements(unit(QStringLiteral("    f(\"a\\tb\");")), kPrefix, 0);
    QCOMPARE(r.rows.size(), 1);
    QCOMPARE(r.rows.at(0).text, QStringLiteral("a\tb"));
    const QStringList table = addToStrings({}, stringEntries(r.rows), QLatin1Char('\t'));
    QCOMPARE(table, QStringList{QStringLiteral("IDS_0\ta\\tb\t")});
    vexil.Strings()->setLines(table);
    QCOMPARE(vexil.GetText("IDS_0"), QStringLiteral("a\\tb"));
    // Language 2 is still empty, not the text's second half.
    QCOMPARE(ExtractWord(3, table.at(0), QLatin1Char('\t')), QString());

    // Another delimiter inside a text is written as a hex escape; texts
    // without it are unchanged.
    QCOMPARE(escapeDelimiter(QStringLiteral("a|b"), QLatin1Char('|')), QStringLiteral("a\\x7cb"));
    QCOMPARE(escapeDelimiter(QStringLiteral("a\tb"), QLatin1Char('|')), QStringLiteral("a\tb"));
}

void tst_ExpertScan::addToStringsReplacesLikeAddString()
{
    const QChar tab = QLatin1Char('\t');
    const QStringList before{QStringLiteral("IDS_1\told\told2\t"), QStringLiteral("OTHER\tx\t")};
    const QStringList after = addToStrings(before,
                                           {{QStringLiteral("IDS_1"), QStringLiteral("new")},
                                            {QStringLiteral("IDS_2"), QStringLiteral("two")},
                                            {QStringLiteral("IDS_2"), QStringLiteral("again")}},
                                           tab);
    QCOMPARE(after, (QStringList{QStringLiteral("OTHER\tx\t"), QStringLiteral("IDS_1\tnew\t"),
                                 QStringLiteral("IDS_2\tagain\t")}));
    // The same as the component's own AddString, one call per entry.
    QWidget form;
    TVexil vexil(&form);
    vexil.Strings()->setLines(before);
    vexil.AddString(QStringLiteral("IDS_1"), {QStringLiteral("new")});
    vexil.AddString(QStringLiteral("IDS_2"), {QStringLiteral("two")});
    vexil.AddString(QStringLiteral("IDS_2"), {QStringLiteral("again")});
    QCOMPARE(vexil.Strings()->lines(), after);
}

void tst_ExpertScan::marks()
{
    TvxFoundList list(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"c\"); f(\"d\");"), kPrefix, 0).rows);
    list.toggleMark(3);
    list.toggleMark(1);
    QCOMPARE(list.marks(), (QList<int>{3, 1}));
    list.toggleMark(3);
    QCOMPARE(list.marks(), (QList<int>{1}));
    list.toggleMark(0); // the header row
    list.toggleMark(9);
    QCOMPARE(list.marks(), (QList<int>{1}));
    list.invertMarks();
    QCOMPARE(list.marks(), (QList<int>{2, 3, 4}));

    // Shift+click after a single mark marks the range, in either direction.
    TvxFoundList range(list.rows());
    range.toggleMark(4);
    QVERIFY(range.shiftClick(2));
    QCOMPARE(range.marks(), (QList<int>{4, 3, 2}));
    TvxFoundList none(list.rows());
    QVERIFY(none.shiftClick(2)); // no marks: nothing happens
    QVERIFY(none.marks().isEmpty());
    QVERIFY(!list.changed());
}

void tst_ExpertScan::shiftClickWithSeveralMarksFails()
{
    TvxFoundList list(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"c\"); f(\"d\");"), kPrefix, 0).rows);
    list.toggleMark(1);
    list.toggleMark(3);
    list.toggleMark(4);
    QString error;
    QVERIFY(!list.shiftClick(2, &error));
    QCOMPARE(error, QStringLiteral("List index out of bounds (2)"));
    QCOMPARE(list.marks(), (QList<int>{3})); // part of the old marks, no range
}

void tst_ExpertScan::deleteRows()
{
    TvxFoundList list(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"c\"); f(\"d\"); f(\"e\");"), kPrefix, 0).rows);
    list.toggleMark(2);
    list.toggleMark(4);
    list.deleteMarked(); // row 2 goes, mark 4 becomes 3: "d" goes
    QCOMPARE(ids(list.rows()), (QStringList{"IDS_0", "IDS_2", "IDS_4"}));
    QVERIFY(list.marks().isEmpty());

    // Marks are lowered whatever their place: the later-marked lower row is missed.
    TvxFoundList quirk(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"c\");"), kPrefix, 0).rows);
    quirk.toggleMark(3);
    quirk.toggleMark(2);
    quirk.deleteMarked();
    QCOMPARE(ids(quirk.rows()), (QStringList{"IDS_1"}));

    TvxFoundList edge(scanStatements(unit("f(\"a\"); f(\"b\");"), kPrefix, 0).rows);
    edge.toggleMark(2);
    edge.toggleMark(1); // lowered to 0 after the first deletion: names no row
    edge.deleteMarked();
    QCOMPARE(ids(edge.rows()), (QStringList{"IDS_0"}));
}

void tst_ExpertScan::startId()
{
    TvxFoundList list(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"a\"); f(\"c\");"), kPrefix, 5).rows);
    QCOMPARE(ids(list.rows()), (QStringList{"IDS_5", "IDS_6", "IDS_5", "IDS_8"}));
    QCOMPARE(list.startIdSuggestion(), QStringLiteral("5"));

    QString error;
    QVERIFY(!list.applyStartId(QStringLiteral("x1"), &error));
    QCOMPARE(error, QStringLiteral("For automatic generation start ID shall be ineteger!"));
    QCOMPARE(ids(list.rows()), (QStringList{"IDS_5", "IDS_6", "IDS_5", "IDS_8"}));

    QVERIFY(list.applyStartId(QStringLiteral("20")));
    QCOMPARE(ids(list.rows()), (QStringList{"IDS_20", "IDS_21", "IDS_20", "IDS_22"}));
    QCOMPARE(list.row(1).replacement, QStringLiteral("ui->Vexil1->GetText(\"IDS_20\" /* \"a\" */ )"));
    QCOMPARE(list.row(3).replacement, list.row(1).replacement);
    QCOMPARE(list.row(4).replacement, QStringLiteral("ui->Vexil1->GetText(\"IDS_22\" /* \"c\" */ )"));
    QVERIFY(!list.changed());
}

void tst_ExpertScan::editIdentifierRebuildsCall()
{
    TvxFoundList list(scanStatements(unit("f(\"a\");"), QStringLiteral("VEXIL_FORM(Form1)"), 0).rows);
    list.setId(1, QStringLiteral("MY_ID"));
    QCOMPARE(list.row(1).replacement, QStringLiteral("VEXIL_FORM(Form1)->GetText(\"MY_ID\" /* \"a\" */ )"));
    QVERIFY(list.changed());
}

void tst_ExpertScan::castToCharPointer()
{
    TvxFoundList list(scanStatements(unit("f(\"a\"); f(\"b\"); f(\"c\");"), kPrefix, 0).rows);
    list.castToCharPointer(2); // no marks: the current row
    QCOMPARE(list.row(2).replacement, QStringLiteral("qPrintable(ui->Vexil1->GetText(\"IDS_1\" /* \"b\" */ ))"));
    list.toggleMark(1);
    list.toggleMark(3);
    list.castToCharPointer(2);
    QVERIFY(list.row(1).replacement.startsWith(QStringLiteral("qPrintable(")));
    QVERIFY(!list.row(2).replacement.startsWith(QStringLiteral("qPrintable(qPrintable(")));
    QVERIFY(list.row(3).replacement.startsWith(QStringLiteral("qPrintable(")));
}

void tst_ExpertScan::castKeepsJoinOutside()
{
    // "a" "b": the first call carries the joining " + "; the cast takes the
    // call alone, so the sum still reads call + call.
    TvxFoundList list(scanStatements(unit(QStringLiteral("    f(\"a\" \"b\");")), kPrefix, 0).rows);
    QCOMPARE(list.rowCount(), 2);
    QVERIFY(list.row(1).replacement.endsWith(QLatin1String(" + ")));
    list.castToCharPointer(1);
    QCOMPARE(list.row(1).replacement,
             QStringLiteral("qPrintable(ui->Vexil1->GetText(\"IDS_0\" /* \"a\" */ )) + "));
}

namespace {
const char *const kFormUnit = R"(#include "form1.h"

static const char *SHello = "Hello";
const QString SBye = QStringLiteral("Bye");
int notAString = 3;

Form1::Form1(QWidget *parent)
    : QWidget(parent), ui(new Ui::Form1)
{
    ui->setupUi(this);
}

void Form1::on_Vexil1_languageChanged()
{
}

void Form1::UpdateStrings()
{
}
)";
}

void tst_ExpertScan::constSection()
{
    const QString src = QString::fromUtf8(kFormUnit);
    QStringList lines;
    const TvxScanResult r = scanConstSection(src, kPrefix, &lines);
    QVERIFY(r.ok());
    QCOMPARE(r.rows.size(), 2);
    QCOMPARE(r.rows.at(0).name, QStringLiteral("SHello"));
    QCOMPARE(r.rows.at(0).id, QStringLiteral("strSHELLO"));
    QCOMPARE(r.rows.at(0).value, QStringLiteral("Hello"));
    QCOMPARE(r.rows.at(0).text, QStringLiteral("SHello"));
    QCOMPARE(r.rows.at(0).replacement, QStringLiteral("ui->Vexil1->GetText(\"strSHELLO\");"));
    QCOMPARE(r.rows.at(0).sourceLine, QStringLiteral("static const char *SHello = \"Hello\";"));
    QCOMPARE(r.rows.at(1).value, QStringLiteral("Bye"));

    const QString out = rewriteConstSection(lines, r.rows, "Form1", "Vexil1", kPrefix, lineEndOf(src));
    QCOMPARE(out, QStringLiteral(R"(#include "form1.h"

static QString SHello;
static QString SBye;
int notAString = 3;

Form1::Form1(QWidget *parent)
    : QWidget(parent), ui(new Ui::Form1)
{
    ui->setupUi(this);
    UpdateStrings();
}

void Form1::on_Vexil1_languageChanged()
{
    UpdateStrings();
}

void Form1::UpdateStrings()
{
    SBye = ui->Vexil1->GetText("strSBYE");
    SHello = ui->Vexil1->GetText("strSHELLO");
}
)"));
    const TvxStringEntries entries = stringEntries(r.rows);
    QCOMPARE(entries, (TvxStringEntries{{"strSBYE", "Bye"}, {"strSHELLO", "Hello"}}));
}

void tst_ExpertScan::constSectionContinuedAndEmpty()
{
    const QString src = QStringLiteral("const char *A = \"a\"\r\n    \"\\r\\n\" +\r\n    \"b\";\r\nconst char *E = \"\";\r\n"
                                       "const char B[] = QT_TR_NOOP(\"bee\");\r\n{\r\nconst char *C = \"after\";\r\n");
    QStringList lines;
    const TvxScanResult r = scanConstSection(src, kPrefix, &lines);
    QCOMPARE(r.rows.size(), 2);
    QCOMPARE(r.rows.at(0).value, QStringLiteral("a\r\nb"));
    QCOMPARE(r.rows.at(0).line, 0);
    QCOMPARE(r.rows.at(0).merged, 2);
    QCOMPARE(r.rows.at(1).name, QStringLiteral("B"));
    QCOMPARE(r.rows.at(1).line, 2);
    QCOMPARE(lines.at(0), QStringLiteral("const char *A = \"a\" \"\\r\\n\" + \"b\";"));
    const QString out = rewriteConstSection(lines, r.rows, "Form1", "Vexil1", kPrefix, lineEndOf(src));
    QCOMPARE(out, QStringLiteral("static QString A;\r\nconst char *E = \"\";\r\nstatic QString B;\r\n{\r\n"
                                 "const char *C = \"after\";\r\n"));
}

void tst_ExpertScan::constValue_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << " \"x\";" << "x";
    QTest::newRow("adjacent") << " \"a\" \"b\";" << "ab";
    QTest::newRow("plus") << " \"a\" + \"b\";" << "ab";
    QTest::newRow("escapes") << " \"q\\\"\\t\";" << "q\"\t";
    QTest::newRow("wrappers") << " QString(QLatin1String(\"a\")) + tr(\"b\");" << "ab";
    QTest::newRow("other call ends it") << " \"a\" + foo(\"b\");" << "a";
    QTest::newRow("identifier ends it") << " \"a\" + other + \"b\";" << "a";
    QTest::newRow("unclosed piece") << " \"a\" \"b;" << "a";
    QTest::newRow("prefix") << " u8\"\xc3\xa9\";" << QString::fromUtf8("\xc3\xa9");
}

void tst_ExpertScan::constValue()
{
    QFETCH(QString, expression);
    QFETCH(QString, value);
    QCOMPARE(evaluateConstValue(expression), value);
}

void tst_ExpertScan::constSectionTwiceAddsTwoCalls()
{
    QString src = QString::fromUtf8(kFormUnit);
    for (int run = 0; run < 2; ++run) {
        // Each run finds one more constant the developer added since.
        src.replace(QStringLiteral("int notAString = 3;"),
                    QStringLiteral("const char *SNew%1 = \"new\";\nint notAString = 3;").arg(run));
        QStringList lines;
        const TvxScanResult r = scanConstSection(src, kPrefix, &lines);
        QVERIFY(r.ok());
        src = rewriteConstSection(lines, r.rows, "Form1", "Vexil1", kPrefix, "\n");
    }
    QVERIFY(src.contains(QStringLiteral("    ui->setupUi(this);\n    UpdateStrings();\n    UpdateStrings();\n}")));
    QVERIFY(src.contains(QStringLiteral("languageChanged()\n{\n    UpdateStrings();\n    UpdateStrings();\n}")));
    QCOMPARE(src.count(QStringLiteral("SHello = ui->Vexil1")), 1);
    QVERIFY(src.contains(QStringLiteral("static QString SNew1;")));
}

void tst_ExpertScan::constSectionNothingFound()
{
    // No column-1 brace of its own: nothing before it is examined.
    TvxScanResult r = scanConstSection(QStringLiteral("const char *A = \"a\";\nvoid f() {\n}\n"), kPrefix, nullptr);
    QCOMPARE(r.message, QStringLiteral("There are no strings in CONST section!"));
    r = scanConstSection(QStringLiteral("const char *A = \"\";\n{\n"), kPrefix, nullptr);
    QCOMPARE(r.message, QStringLiteral("There are no strings in CONST section!"));
}

void tst_ExpertScan::ensureMethods()
{
    const QString header = QStringLiteral("#pragma once\nclass Form1 : public QWidget\n{\n    Q_OBJECT\npublic:\n"
                                          "    Form1();\nprivate:\n    Ui::Form1 *ui;\n};\n");
    QString h = ensureDeclaration(header, "Form1", languageSlotName("Vexil1"), "private slots:");
    h = ensureDeclaration(h, "Form1", "UpdateStrings", "private:");
    QCOMPARE(h, QStringLiteral("#pragma once\nclass Form1 : public QWidget\n{\n    Q_OBJECT\npublic:\n"
                               "    Form1();\nprivate:\n    void UpdateStrings();\n    Ui::Form1 *ui;\n"
                               "private slots:\n    void on_Vexil1_languageChanged();\n};\n"));
    // Present already: unchanged.
    QCOMPARE(ensureDeclaration(h, "Form1", "UpdateStrings", "private:"), h);
    QCOMPARE(ensureDeclaration(h, "Other", "UpdateStrings", "private:"), h);

    const QString cpp = QStringLiteral("#include \"form1.h\"\n\nForm1::Form1()\n{\n}\n");
    QString c = ensureDefinition(cpp, "Form1", "UpdateStrings");
    QCOMPARE(c, cpp + QStringLiteral("\nvoid Form1::UpdateStrings()\n{\n}\n"));
    QCOMPARE(ensureDefinition(c, "Form1", "UpdateStrings"), c);
}

void tst_ExpertScan::unusedIdentifiers_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QStringList>("table");
    QTest::addColumn<QStringList>("unused");
    const QString d(QChar(9));
    QTest::newRow("empty table") << "x" << QStringList{} << QStringList{};
    QTest::newRow("used and unused") << "f(ui->Vexil1->GetText(\"IDS_1\"));"
                                     << QStringList{"IDS_1" + d + "a" + d, "IDS_2" + d + "b" + d}
                                     << QStringList{"IDS_2"};
    QTest::newRow("call with comment is not a use")
        << "f(ui->Vexil1->GetText(\"IDS_4\" /* \"text\" */ ));" << QStringList{"IDS_4" + d + "text" + d}
        << QStringList{"IDS_4"};
    QTest::newRow("inside a comment counts") << "// GetText(\"ID\")" << QStringList{"ID" + d} << QStringList{};
    QTest::newRow("case-sensitive") << "GetText(\"ids_1\")" << QStringList{"IDS_1" + d} << QStringList{"IDS_1"};
    QTest::newRow("blank not allowed") << "GetText( \"IDS_1\")" << QStringList{"IDS_1" + d} << QStringList{"IDS_1"};
    QTest::newRow("const-section call counts") << "    S = ui->Vexil1->GetText(\"strS\");" << QStringList{"strS" + d}
                                               << QStringList{};
    QTest::newRow("identifier with a quote") << "GetText(\"a\"b\")" << QStringList{"a\"b" + d} << QStringList{};
}

void tst_ExpertScan::unusedIdentifiers()
{
    QFETCH(QString, source);
    QFETCH(QStringList, table);
    QFETCH(QStringList, unused);
    QCOMPARE(Vexil::Expert::unusedIdentifiers(source, table, QChar(9)), unused);
}

QTEST_MAIN(tst_ExpertScan)
#include "tst_expertscan.moc"
