// The interchange with translators' tools: translation files read and
// changed entry by entry, .ts and .po written and read, checked by Qt's and
// gettext's own tools, imports, statistics, validation and merging.
#include "memini.h"
#include "vxfileformat.h"
#include "vximport.h"
#include "vxmerge.h"
#include "vxpoformat.h"
#include "vxstats.h"
#include "vxtsformat.h"
#include "vxvalidate.h"

#include <QtCore/QProcess>
#include <QtTest>

using namespace Vexil::Interchange;

namespace {

struct Row
{
    const char *section;
    QString key;
    QStringList texts;
};

// A translation file written by the suite's own INI store, as components save them.
void writeTranslationFile(const QString &path, const QStringList &names, const QList<Row> &rows, QChar delim = u'|')
{
    QFile::remove(path);
    TMemIniFile ini(path);
    Vexil::FileFormat::writeHeader(ini, delim, names);
    for (const Row &r : rows)
        ini.WriteString(QLatin1String(r.section), r.key, TvxTranslationTable::joinValue(r.texts, delim));
    ini.UpdateFile();
}

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(bytes);
}

// Texts that every format must carry unchanged.
const QString HardText = QStringLiteral("Zeile 1\nZeile 2\r\nÜmlaut [x] {y} <tag> & \"q\" 'a' | ~ \\ \u4E2D\u6587 \U0001F600");

QList<Row> sampleRows()
{
    return {
        {"Captions", QStringLiteral("TForm1.TForm1"), {QStringLiteral("Main"), QStringLiteral("Haupt")}},
        {"Captions", QStringLiteral("TForm1.Button1.Caption"), {QStringLiteral("&Open"), QStringLiteral("Ö&ffnen")}},
        {"Captions", QStringLiteral("TForm1.Button2.Caption"), {QStringLiteral("&Open"), QString()}},
        {"Hints", QStringLiteral("TForm1.Button1.Hint"), {QStringLiteral("Opens %1 of %2"), QStringLiteral("Öffnet %1")}},
        {"Multilines", QStringLiteral("TForm1.Memo1.Lines"), {HardText, HardText + QStringLiteral(" (de)")}},
        {"Strings", QStringLiteral("TForm2.IDS_1"), {QStringLiteral("Saved."), QStringLiteral("Gespeichert.")}},
        {"Strings", QStringLiteral("TForm2.IDS_2"), {QString(), QStringLiteral("orphan")}},
        {"Collections", QStringLiteral("TForm2.List-0+.Caption"), {QStringLiteral("Row"), QStringLiteral("Zeile")}},
    };
}

} // namespace

class TstInterchange : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_lng = m_dir.filePath(QStringLiteral("app.lng")); }

    void tableReadsEntriesAndChangesOnlyWhatIsSet();
    void tableRefusesMissingAndDamagedFiles_data();
    void tableRefusesMissingAndDamagedFiles();
    void valuesSplitAsComponentsLoadThem();

    void tsRoundTripKeepsEveryText();
    void poRoundTripKeepsEveryText();
    void exportGroupsByFormAndCategoryAndFilters();
    void damagedMessageFilesAreReportedWithTheirLine_data();
    void damagedMessageFilesAreReportedWithTheirLine();
    void poReaderFollowsGettextConventions();

    void realToolsAcceptOurFiles();
    void roundTripThroughLconvertChangesNothing();

    void importUpdatesOnlyMatchingEntries();
    void importLeavesOutUnfinishedAndChangedSources();
    void exportThenImportOfLargeFileIsByteForByte();
    void targetLanguageIsFoundFromFileOrName();
    void importQtMatchesFormAndSourceText();
    void pluralAndVariantTranslationsReadAsTheirFirstForm();

    void statisticsCountPerFormCategoryAndLanguage();
    void validationReportsBrokenEntries();
    void mergeLetsTheSecondFileWin();

private:
    QTemporaryDir m_dir;
    QString m_lng;
};

void TstInterchange::tableReadsEntriesAndChangesOnlyWhatIsSet()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    const QByteArray before = readAll(m_lng);
    TvxTranslationTable table;
    QString error;
    QVERIFY2(table.load(m_lng, &error), qPrintable(error));
    QCOMPARE(table.languageCount(), 2);
    QCOMPARE(table.entries().size(), sampleRows().size());
    const int memo = table.indexOf(stMultiLines, QStringLiteral("tform1.memo1.lines"));
    QVERIFY(memo >= 0);
    QCOMPARE(table.text(memo, 1), HardText);
    QCOMPARE(table.entries().at(memo).form(), QStringLiteral("TForm1"));

    // Nothing changed: nothing written.
    QVERIFY(table.save(&error));
    QCOMPARE(readAll(m_lng), before);

    // One text changed: exactly that value differs in the file.
    const int b2 = table.indexOf(stCaptions, QStringLiteral("TForm1.Button2.Caption"));
    QVERIFY(!table.setText(b2, 1, QStringLiteral("&Open")));
    QVERIFY(table.setText(b2, 2, QStringLiteral("Ö&ffnen|neu")));
    QVERIFY(table.save(&error));
    QByteArray expected = before;
    expected.replace(QByteArray("TForm1.Button2.Caption=&Open||"),
                     QByteArray("TForm1.Button2.Caption=&Open|Ö&ffnen\x1cneu|"));
    QCOMPARE(readAll(m_lng), expected);

    // A new language past the last one gets its name.
    table.setLanguageName(3, QStringLiteral("FRENCH"));
    QVERIFY(table.setText(b2, 3, QStringLiteral("&Ouvrir")));
    QVERIFY(table.save(&error));
    TvxTranslationTable again;
    QVERIFY(again.load(m_lng, &error));
    QCOMPARE(again.languageNames(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")}));
    QCOMPARE(again.texts(again.indexOf(stCaptions, QStringLiteral("TForm1.Button2.Caption"))),
             (QStringList{QStringLiteral("&Open"), QStringLiteral("Ö&ffnen|neu"), QStringLiteral("&Ouvrir")}));
}

void TstInterchange::tableRefusesMissingAndDamagedFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");
    QTest::newRow("binary") << QByteArray("[Captions]\nA.B=x\0y|", 20) << QStringLiteral("binary data");
    QTest::newRow("other ini") << QByteArray("[General]\nwidth=3\nheight=4\n") << QStringLiteral("not a translation file");
    QTest::newRow("missing") << QByteArray() << QStringLiteral("no such file");
}

void TstInterchange::tableRefusesMissingAndDamagedFiles()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(QStringLiteral("bad.lng"));
    QFile::remove(path);
    if (!bytes.isEmpty())
        writeBytes(path, bytes);
    TvxTranslationTable table;
    QString error;
    QVERIFY(!table.load(path, &error));
    QVERIFY2(error.contains(message) && error.contains(path), qPrintable(error));
    if (!bytes.isEmpty())
        QCOMPARE(readAll(path), bytes);
    QVERIFY(!table.load(m_dir.path(), &error));
    QVERIFY(error.contains(QStringLiteral("folder")));
}

void TstInterchange::valuesSplitAsComponentsLoadThem()
{
    const QChar d(u'|');
    bool closed = false;
    QCOMPARE(TvxTranslationTable::splitValue(QStringLiteral("a|b|"), d, &closed), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
    QVERIFY(closed);
    QCOMPARE(TvxTranslationTable::splitValue(QStringLiteral("a||c"), d, &closed),
             (QStringList{QStringLiteral("a"), QString(), QStringLiteral("c")}));
    QVERIFY(!closed);
    // One text without a delimiter stands for the first two languages.
    QCOMPARE(TvxTranslationTable::splitValue(QStringLiteral("same"), d), (QStringList{QStringLiteral("same"), QStringLiteral("same")}));
    // Line breaks and the delimiter inside a text come back.
    const QStringList texts{QStringLiteral("x|y"), QStringLiteral("1\r\n2\n")};
    const QString value = TvxTranslationTable::joinValue(texts, d);
    QVERIFY(!value.contains(QChar(10)) && !value.contains(QChar(13)));
    QCOMPARE(value.count(d), 2);
    QCOMPARE(TvxTranslationTable::splitValue(value, d), texts);
}

void TstInterchange::tsRoundTripKeepsEveryText()
{
    TvxMessageFile file;
    file.language = QStringLiteral("de");
    file.sourceLanguage = QStringLiteral("en");
    file.messages = {{QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Memo-1+|x"), HardText, HardText + QChar(7), true},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.B"), QStringLiteral("  lead"), QString(), false},
                     {QStringLiteral("TForm2/Strings"), QStringLiteral("TForm2.IDS_1"), QStringLiteral("a"), QStringLiteral("b"), true}};
    TvxMessageFile back;
    QString error;
    QVERIFY2(Ts::fromBytes(Ts::toBytes(file), &back, &error), qPrintable(error));
    QCOMPARE(back.language, file.language);
    QCOMPARE(back.sourceLanguage, file.sourceLanguage);
    QCOMPARE(back.messages.size(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(back.messages.at(i).context, file.messages.at(i).context);
        QCOMPARE(back.messages.at(i).comment, file.messages.at(i).comment);
        QCOMPARE(back.messages.at(i).source, file.messages.at(i).source);
        QCOMPARE(back.messages.at(i).translation, file.messages.at(i).translation);
        QCOMPARE(back.messages.at(i).finished, file.messages.at(i).finished);
    }
    // One context per run of messages.
    QCOMPARE(Ts::toBytes(file).count("<context>"), 2);

    // A language code with control characters (read from a damaged .po
    // header) still gives a well-formed document.
    file.language = QStringLiteral("de\x05\x01");
    QVERIFY2(Ts::fromBytes(Ts::toBytes(file), &back, &error), qPrintable(error));
    QCOMPARE(back.language, QStringLiteral("de"));
}

void TstInterchange::poRoundTripKeepsEveryText()
{
    TvxMessageFile file;
    file.language = QStringLiteral("pt_BR");
    file.messages = {{QStringLiteral("TForm1/Multilines"), QStringLiteral("TForm1.M~|x"), HardText, QStringLiteral("\tT\n"), true},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.B"), QStringLiteral("x"), QStringLiteral("draft"), false}};
    const QByteArray bytes = Po::toBytes(file);
    QVERIFY(bytes.contains("msgctxt \"TForm1/Multilines|TForm1.M~~~|x\""));
    QVERIFY(bytes.contains("#, fuzzy\nmsgctxt \"TForm1/Captions|TForm1.B\""));
    TvxMessageFile back;
    QString error;
    QVERIFY2(Po::fromBytes(bytes, &back, &error), qPrintable(error));
    QCOMPARE(back.language, file.language);
    QCOMPARE(back.messages.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(back.messages.at(i).context, file.messages.at(i).context);
        QCOMPARE(back.messages.at(i).comment, file.messages.at(i).comment);
        QCOMPARE(back.messages.at(i).source, file.messages.at(i).source);
        QCOMPARE(back.messages.at(i).translation, file.messages.at(i).translation);
        QCOMPARE(back.messages.at(i).finished, file.messages.at(i).finished);
    }

    // A language read from another file goes back out quoted like a text.
    file.language = QStringLiteral("de\"X-Qt-Contexts: true");
    QVERIFY2(Po::fromBytes(Po::toBytes(file), &back, &error), qPrintable(error));
    QCOMPARE(back.language, file.language);
}

void TstInterchange::exportGroupsByFormAndCategoryAndFilters()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    int skipped = 0;
    TvxMessageFile all = exportMessages(table, 2, {}, {}, &skipped);
    QCOMPARE(skipped, 1); // TForm2.IDS_2 has no language-1 text
    QCOMPARE(all.language, QStringLiteral("de"));
    QCOMPARE(all.sourceLanguage, QStringLiteral("en"));
    QCOMPARE(all.messages.size(), 7);
    QCOMPARE(all.messages.at(0).context, QStringLiteral("TForm1/Captions"));
    QCOMPARE(all.messages.at(0).comment, QStringLiteral("TForm1.TForm1"));
    QCOMPARE(all.messages.at(2).translation, QString());
    QVERIFY(!all.messages.at(2).finished);

    const TvxMessageFile some = exportMessages(table, 2, {QStringLiteral("tform2")}, {stCollections});
    QCOMPARE(some.messages.size(), 1);
    QCOMPARE(some.messages.at(0).context, QStringLiteral("TForm2/Collections"));
    QCOMPARE(some.messages.at(0).comment, QStringLiteral("TForm2.List-0+.Caption"));
}

void TstInterchange::damagedMessageFilesAreReportedWithTheirLine_data()
{
    QTest::addColumn<bool>("po");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("message");
    QTest::newRow("ts unclosed") << false << QByteArray("<TS>\n<context>\n<name>A</name>\n<message><source>x</message>\n")
                                 << QStringLiteral("line 4");
    QTest::newRow("ts other xml") << false << QByteArray("<html><body/></html>") << QStringLiteral("not a Qt translation source");
    QTest::newRow("ts empty") << false << QByteArray() << QStringLiteral("line");
    QTest::newRow("po unclosed") << true << QByteArray("msgid \"a\"\nmsgstr \"b\n") << QStringLiteral("line 2");
    QTest::newRow("po stray") << true << QByteArray("msgid \"a\"\nmsgstr \"b\"\nhello\n") << QStringLiteral("line 3");
    QTest::newRow("po no msgstr") << true << QByteArray("msgid \"a\"\n") << QStringLiteral("no msgstr");
    QTest::newRow("po binary") << true << QByteArray("msgid \"\xff\xfe\"\nmsgstr \"\"\n") << QStringLiteral("not UTF-8");
}

void TstInterchange::damagedMessageFilesAreReportedWithTheirLine()
{
    QFETCH(bool, po);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(po ? QStringLiteral("bad.po") : QStringLiteral("bad.ts"));
    writeBytes(path, bytes);
    TvxMessageFile file;
    QString error;
    QVERIFY(!(po ? Po::read(path, &file, &error) : Ts::read(path, &file, &error)));
    QVERIFY2(error.contains(message) && error.startsWith(path) && error.contains(QStringLiteral("damaged")), qPrintable(error));
    QVERIFY(!Po::read(m_dir.filePath(QStringLiteral("none.po")), &file, &error));
    QVERIFY(error.contains(QStringLiteral("no such file")));
}

void TstInterchange::poReaderFollowsGettextConventions()
{
    const QByteArray bytes = "# translator comment\n"
                             "msgid \"\"\nmsgstr \"\"\n\"Language: fr\\n\"\n\n"
                             "#: src/a.cpp:3\n#, fuzzy, c-format\nmsgctxt \"A\"\nmsgid \"one\"\nmsgstr \"un\"\n"
                             "msgctxt \"B|k\"\nmsgid \"\"\n\"multi\\n\"\n\"line\"\nmsgstr \"\"\n\"plusieurs\\n\"\n\"lignes\"\n\n"
                             "msgid \"file\"\nmsgid_plural \"files\"\nmsgstr[0] \"fichier\"\nmsgstr[1] \"fichiers\"\n\n"
                             "#~ msgctxt \"C\"\n#~ msgid \"old\"\n#~ msgstr \"vieux\"\n\n"
                             "msgid \"oct\\101\\x42\"\nmsgstr \"ok\"\n";
    TvxMessageFile file;
    QString error;
    QVERIFY2(Po::fromBytes(bytes, &file, &error), qPrintable(error));
    QCOMPARE(file.language, QStringLiteral("fr"));
    QCOMPARE(file.messages.size(), 4); // header and the obsolete one left out
    QCOMPARE(file.messages.at(0).context, QStringLiteral("A"));
    QVERIFY(!file.messages.at(0).finished);
    QCOMPARE(file.messages.at(0).line, 6); // its first comment line
    QCOMPARE(file.messages.at(1).context, QStringLiteral("B"));
    QCOMPARE(file.messages.at(1).comment, QStringLiteral("k"));
    QCOMPARE(file.messages.at(1).source, QStringLiteral("multi\nline"));
    QCOMPARE(file.messages.at(1).translation, QStringLiteral("plusieurs\nlignes"));
    QVERIFY(file.messages.at(1).finished);
    QCOMPARE(file.messages.at(2).translation, QStringLiteral("fichier"));
    QCOMPARE(file.messages.at(3).source, QStringLiteral("octAB"));
}

namespace {

// A tool found at configure time; empty when it was not found.
QString tool(const char *path)
{
    const QString p = QString::fromUtf8(path);
    return p.endsWith(QLatin1String("-NOTFOUND")) ? QString() : p;
}

// Runs a tool; its exit code, standard error in @p errors.
int run(const QString &program, const QStringList &args, QString *errors = nullptr)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(120000))
        return -1;
    if (errors)
        *errors = QString::fromUtf8(p.readAllStandardError());
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

} // namespace

void TstInterchange::realToolsAcceptOurFiles()
{
    const QString lconvert = tool(VEXIL_LCONVERT), lrelease = tool(VEXIL_LRELEASE), msgfmt = tool(VEXIL_MSGFMT);
    if (lconvert.isEmpty() || lrelease.isEmpty() || msgfmt.isEmpty())
        QSKIP("Qt's lconvert and lrelease and gettext's msgfmt are needed (scripts/setup.sh installs them)");
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    const TvxMessageFile messages = exportMessages(table, 2, {}, {});
    const QString ts = m_dir.filePath(QStringLiteral("app_de.ts"));
    const QString po = m_dir.filePath(QStringLiteral("app_de.po"));
    QString error;
    QVERIFY(Ts::write(messages, ts, &error));
    QVERIFY(Po::write(messages, po, &error));

    QCOMPARE(run(msgfmt, {QStringLiteral("--check"), QStringLiteral("-o"), QStringLiteral("/dev/null"), po}, &error), 0);
    QVERIFY2(!error.contains(QLatin1String("warning")), qPrintable(error)); // a complete header too
    QCOMPARE(run(lrelease, {ts, QStringLiteral("-qm"), m_dir.filePath(QStringLiteral("app_de.qm"))}, &error), 0);
    QVERIFY2(!error.contains(QStringLiteral("rror")), qPrintable(error));
    // The compiled catalogue answers as Qt's translator would at run time.
    QTranslator translator;
    QVERIFY(translator.load(m_dir.filePath(QStringLiteral("app_de.qm"))));
    QCOMPARE(translator.translate("TForm1/Captions", "&Open", "TForm1.Button1.Caption"), QStringLiteral("Ö&ffnen"));
    QCOMPARE(translator.translate("TForm1/Multilines", HardText.toUtf8().constData(), "TForm1.Memo1.Lines"),
             HardText + QStringLiteral(" (de)"));
    // Qt's converter reads our .po and our .ts.
    QCOMPARE(run(lconvert, {QStringLiteral("-i"), po, QStringLiteral("-o"), m_dir.filePath(QStringLiteral("from-po.ts"))}, &error), 0);
    QCOMPARE(run(lconvert, {QStringLiteral("-i"), ts, QStringLiteral("-o"), m_dir.filePath(QStringLiteral("from-ts.po"))}, &error), 0);
}

void TstInterchange::roundTripThroughLconvertChangesNothing()
{
    const QString lconvert = tool(VEXIL_LCONVERT);
    if (lconvert.isEmpty())
        QSKIP("Qt's lconvert is needed (scripts/setup.sh installs it)");
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    const QByteArray before = readAll(m_lng);
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    QString error;
    const QString ts = m_dir.filePath(QStringLiteral("rt.ts")), po = m_dir.filePath(QStringLiteral("rt.po")),
                  back = m_dir.filePath(QStringLiteral("rt-back.ts"));
    QVERIFY(Ts::write(exportMessages(table, 2, {}, {}), ts, &error));
    QCOMPARE(run(lconvert, {QStringLiteral("-i"), ts, QStringLiteral("-o"), po}), 0);
    QCOMPARE(run(lconvert, {QStringLiteral("-i"), po, QStringLiteral("-o"), back}), 0);

    // Blank language 2, then let each converted file bring it back.
    for (const QString &path : {po, back}) {
        TvxTranslationTable blank;
        QVERIFY(blank.load(m_lng, nullptr));
        for (int i = 0; i < blank.entries().size(); ++i)
            blank.setText(i, 2, QString());
        const QString copy = m_dir.filePath(QStringLiteral("blank.lng"));
        QFile::remove(copy);
        QVERIFY(blank.save(&error, copy));
        TvxTranslationTable restored;
        QVERIFY(restored.load(copy, nullptr));
        TvxMessageFile messages;
        QVERIFY(path.endsWith(QStringLiteral(".po")) ? Po::read(path, &messages, &error) : Ts::read(path, &messages, &error));
        QCOMPARE(messages.language, QStringLiteral("de"));
        const TvxImportReport report = importMessages(restored, messages, 2);
        QVERIFY2(report.unmatched.isEmpty(), qPrintable(report.unmatched.join(QLatin1Char('\n'))));
        QCOMPARE(report.updated, 6); // every translated entry with a source
        QVERIFY(restored.save(&error));
        QByteArray expected = before;
        // The entry without a language-1 text never travelled.
        expected.replace(QByteArray("TForm2.IDS_2=|orphan|"), QByteArray("TForm2.IDS_2=||"));
        QCOMPARE(readAll(copy), expected);
    }
}

void TstInterchange::importUpdatesOnlyMatchingEntries()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    TvxMessageFile file;
    file.messages = {{QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Button2.Caption"), QStringLiteral("&Open"), QStringLiteral("Ö&ffnen"), true},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Button1.Caption"), QStringLiteral("&Open"), QStringLiteral("Ö&ffnen"), true},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Button9.Caption"), QStringLiteral("New"), QStringLiteral("Neu"), true, false, 40},
                     {QStringLiteral("TForm1/Hints"), QStringLiteral("TForm1.Button2.Caption"), QStringLiteral("&Open"), QStringLiteral("x"), true},
                     {QStringLiteral("TForm9/Captions"), QStringLiteral("TForm1.Button1.Caption"), QStringLiteral("&Open"), QStringLiteral("x"), true},
                     {QStringLiteral("MainWindow"), QString(), QStringLiteral("&Open"), QStringLiteral("x"), true}};
    const TvxImportReport report = importMessages(table, file, 2);
    QCOMPARE(report.updated, 1);
    QCOMPARE(report.unchanged, 1);
    QCOMPARE(report.unmatched.size(), 4); // wrong key, wrong category, wrong form, not ours
    QVERIFY(report.unmatched.at(0).startsWith(QStringLiteral("line 40: TForm1/Captions TForm1.Button9.Caption")));
    QCOMPARE(table.entries().size(), sampleRows().size()); // nothing invented
    QCOMPARE(table.text(table.indexOf(stCaptions, QStringLiteral("TForm1.Button2.Caption")), 2), QStringLiteral("Ö&ffnen"));
    QCOMPARE(table.text(table.indexOf(stCaptions, QStringLiteral("TForm1.Button2.Caption")), 1), QStringLiteral("&Open"));
}

void TstInterchange::importLeavesOutUnfinishedAndChangedSources()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    TvxMessageFile file;
    file.messages = {{QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Button2.Caption"), QStringLiteral("&Open"), QStringLiteral("draft"), false},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.Button1.Caption"), QStringLiteral("&Open"), QString(), true},
                     {QStringLiteral("TForm1/Captions"), QStringLiteral("TForm1.TForm1"), QStringLiteral("Old main"), QStringLiteral("Alt"), true},
                     {QStringLiteral("TForm2/Strings"), QStringLiteral("TForm2.IDS_1"), QStringLiteral("Saved."), QStringLiteral("x"), true, true},
                     {QStringLiteral("TForm2/Strings"), QStringLiteral("TForm2.IDS_1"), QStringLiteral("Saved."), QStringLiteral("a\x1a" "b"), true},
                     {QStringLiteral("TForm2/Strings"), QStringLiteral("TForm2.IDS_1"), QStringLiteral("Saved."), QStringLiteral("a") + QChar(0), true}};
    const TvxImportReport report = importMessages(table, file, 2);
    QCOMPARE(report.updated, 0);
    QCOMPARE(report.unfinished, 2);
    QCOMPARE(report.obsolete, 1);
    QCOMPARE(report.sourceChanged.size(), 1);
    // A file cannot hold these: stored, they would read back as a line
    // break, or make the file look binary.
    QCOMPARE(report.unstorable.size(), 2);
    QVERIFY(!table.isModified());
    QVERIFY(TvxTranslationTable::canStore(QStringLiteral("line\r\nbreak | tab\t")));
}

void TstInterchange::exportThenImportOfLargeFileIsByteForByte()
{
    // 100,000 entries over forms and categories, with every kind of hard text.
    const int count = 100000;
    QList<Row> rows;
    rows.reserve(count);
    static const char *const sections[] = {"Captions", "Hints", "Multilines", "Strings", "Collections"};
    for (int i = 0; i < count; ++i) {
        const QString n = QString::number(i);
        const char *section = sections[i % 5];
        const QString key = QStringLiteral("TForm%1.").arg(i % 7) + (i % 5 == 4 ? QStringLiteral("Grid.Items-%1+.Caption").arg(n)
                                                                                   : QStringLiteral("Item") + n);
        QString source = QStringLiteral("Text ") + n;
        if (i % 11 == 0)
            source += QStringLiteral("\nline two\r\nthree");
        if (i % 13 == 0)
            source += QStringLiteral(" a|b [c] \u00E9\u4E2D");
        rows.append({section, key, {source, source + QStringLiteral(" (de)"), i % 3 ? QStringLiteral("fr ") + n : QString()}});
    }
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")}, rows);
    const QByteArray before = readAll(m_lng);

    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    QCOMPARE(table.entries().size(), count);
    const TvxMessageFile de = exportMessages(table, 2, {}, {});
    const TvxMessageFile fr = exportMessages(table, 3, {}, {});
    QString error;
    const QString ts = m_dir.filePath(QStringLiteral("big_de.ts")), po = m_dir.filePath(QStringLiteral("big_fr.po"));
    QVERIFY(Ts::write(de, ts, &error));
    QVERIFY(Po::write(fr, po, &error));

    for (int i = 0; i < table.entries().size(); ++i) {
        table.setText(i, 2, QString());
        table.setText(i, 3, QString());
    }
    const QString copy = m_dir.filePath(QStringLiteral("big-blank.lng"));
    QVERIFY(table.save(&error, copy));
    QVERIFY(readAll(copy) != before);

    TvxTranslationTable restored;
    QVERIFY(restored.load(copy, nullptr));
    TvxMessageFile back;
    QVERIFY(Ts::read(ts, &back, &error));
    QCOMPARE(importMessages(restored, back, 2).updated, count);
    QVERIFY(Po::read(po, &back, &error));
    QCOMPARE(importMessages(restored, back, 3).updated, count - count / 3 - 1);
    QVERIFY(restored.save(&error));
    QVERIFY(readAll(copy) == before);
}

void TstInterchange::targetLanguageIsFoundFromFileOrName()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("Français")},
                         {{"Captions", QStringLiteral("F.A"), {QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}}});
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    QString error;
    QCOMPARE(targetLanguage(table, QStringLiteral("3"), QString(), QString(), false, &error), 3);
    QCOMPARE(targetLanguage(table, QStringLiteral("german"), QString(), QString(), false, &error), 2);
    // Names written in the language itself map to its code as well.
    QCOMPARE(targetLanguage(table, QString(), QStringLiteral("fr"), QString(), false, &error), 3);
    QCOMPARE(languageCode(QStringLiteral("Deutsch")), QStringLiteral("de"));
    QCOMPARE(targetLanguage(table, QStringLiteral("de"), QString(), QString(), false, &error), 2);
    QCOMPARE(targetLanguage(table, QString(), QStringLiteral("de_DE"), QString(), false, &error), 2);
    QCOMPARE(targetLanguage(table, QString(), QString(), QStringLiteral("x/app_3.po"), false, &error), 3);
    // Language 1 is the source; numbers past the last and unknown names are refused.
    QCOMPARE(targetLanguage(table, QStringLiteral("1"), QString(), QString(), false, &error), -1);
    QVERIFY(error.contains(QStringLiteral("source")));
    QCOMPARE(targetLanguage(table, QStringLiteral("4"), QString(), QString(), false, &error), -1);
    QCOMPARE(targetLanguage(table, QStringLiteral("english"), QString(), QString(), false, &error), -1);
    QCOMPARE(targetLanguage(table, QStringLiteral("klingon"), QString(), QString(), false, &error), -1);
    QCOMPARE(targetLanguage(table, QString(), QStringLiteral("it"), QStringLiteral("app.ts"), false, &error), -1);
    QVERIFY(error.contains(QStringLiteral("--language")));
    // A Qt application's file may bring a language the file lacks.
    QCOMPARE(targetLanguage(table, QString(), QStringLiteral("it"), QStringLiteral("app.ts"), true, &error), 4);
}

void TstInterchange::importQtMatchesFormAndSourceText()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH")},
                         {{"Captions", QStringLiteral("MainWindow.MainWindow"), {QStringLiteral("Editor")}},
                          {"Captions", QStringLiteral("MainWindow.actionOpen.Text"), {QStringLiteral("&Open...")}},
                          {"Captions", QStringLiteral("MainWindow.openButton.Text"), {QStringLiteral("&Open...")}},
                          {"Hints", QStringLiteral("MainWindow.actionOpen.ToolTip"), {QStringLiteral("Open a file")}},
                          {"Captions", QStringLiteral("Dialog.okButton.Text"), {QStringLiteral("&Open...")}}});
    const QByteArray ts = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\" language=\"de_DE\">\n"
                          "<context>\n    <name>MainWindow</name>\n"
                          "    <message>\n        <location filename=\"mainwindow.ui\" line=\"14\"/>\n"
                          "        <source>Editor</source>\n        <translation>Bearbeiter</translation>\n    </message>\n"
                          "    <message>\n        <source>&amp;Open...</source>\n        <translation>Ö&amp;ffnen...</translation>\n    </message>\n"
                          "    <message>\n        <source>Open a file</source>\n        <translation type=\"unfinished\">Datei</translation>\n    </message>\n"
                          "    <message>\n        <source>Not on the form</source>\n        <translation>Nicht</translation>\n    </message>\n"
                          "</context>\n</TS>\n";
    TvxMessageFile file;
    QString error;
    QVERIFY(Ts::fromBytes(ts, &file, &error));
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    const int language = targetLanguage(table, QString(), file.language, QStringLiteral("app_de.ts"), true, &error);
    QCOMPARE(language, 2);
    table.setLanguageName(language, languageNameOf(file.language));
    const TvxImportReport report = importQtMessages(table, file, language);
    QCOMPARE(report.updated, 3); // the title and both "&Open..." of MainWindow
    QCOMPARE(report.unfinished, 1);
    QCOMPARE(report.unmatched.size(), 1);
    QVERIFY(report.unmatched.at(0).contains(QStringLiteral("Not on the form")));
    QVERIFY(table.save(&error));

    TvxTranslationTable again;
    QVERIFY(again.load(m_lng, nullptr));
    QCOMPARE(again.languageNames(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(again.text(again.indexOf(stCaptions, QStringLiteral("MainWindow.openButton.Text")), 2), QStringLiteral("Ö&ffnen..."));
    QCOMPARE(again.text(again.indexOf(stCaptions, QStringLiteral("MainWindow.MainWindow")), 2), QStringLiteral("Bearbeiter"));
    // Another form showing the same text is not this form's.
    QCOMPARE(again.text(again.indexOf(stCaptions, QStringLiteral("Dialog.okButton.Text")), 2), QString());
}

void TstInterchange::pluralAndVariantTranslationsReadAsTheirFirstForm()
{
    // As Qt's tools indent them: the blanks between the forms belong to no text.
    const QByteArray ts = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<TS version=\"2.1\" language=\"de\">\n"
                          "<context>\n    <name>MainWindow</name>\n"
                          "    <message numerus=\"yes\">\n        <source>%n file(s)</source>\n"
                          "        <translation>\n            <numerusform>%n Datei</numerusform>\n"
                          "            <numerusform>%n Dateien</numerusform>\n        </translation>\n    </message>\n"
                          "    <message>\n        <source>Open the file</source>\n"
                          "        <translation variants=\"yes\">\n            <lengthvariant>Datei &#xf6;ffnen</lengthvariant>\n"
                          "            <lengthvariant>&#xd6;ffnen</lengthvariant>\n        </translation>\n    </message>\n"
                          "    <message>\n        <source>Plain</source>\n        <translation> Schlicht </translation>\n    </message>\n"
                          "</context>\n</TS>\n";
    TvxMessageFile file;
    QString error;
    QVERIFY2(Ts::fromBytes(ts, &file, &error), qPrintable(error));
    QCOMPARE(file.messages.size(), 3);
    QCOMPARE(file.messages.at(0).translation, QStringLiteral("%n Datei"));
    QCOMPARE(file.messages.at(1).translation, QStringLiteral("Datei öffnen"));
    QCOMPARE(file.messages.at(2).translation, QStringLiteral(" Schlicht "));
    QVERIFY(file.messages.at(0).finished);
}

void TstInterchange::statisticsCountPerFormCategoryAndLanguage()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}, sampleRows());
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    const auto rows = statistics(table);
    // TForm1: Captions, Hints, Multilines; TForm2: Strings, Collections; two languages each.
    QCOMPARE(rows.size(), 10);
    QCOMPARE(rows.at(0).form, QStringLiteral("TForm1"));
    QCOMPARE(rows.at(0).category, stCaptions);
    QCOMPARE(rows.at(1).language, 2);
    QCOMPARE(rows.at(1).entries, 3);
    QCOMPARE(rows.at(1).translated, 2);
    QCOMPARE(rows.at(1).missing(), 1);
    QCOMPARE(rows.at(6).form, QStringLiteral("TForm2"));
    QCOMPARE(rows.at(6).category, stStrings);
    QCOMPARE(rows.at(6).translated, 1); // language 1 of IDS_2 is empty
    QCOMPARE(rows.at(7).translated, 2);
}

void TstInterchange::validationReportsBrokenEntries()
{
    writeBytes(m_lng, "[OPTIONS]\nDELIMITER=|\n\n[Language names - for internal use only!]\nLanguage_1=ENGLISH\nLanguage_2=GERMAN\n\n"
                      "[Captions]\nF.Good=&Save %1.|&Speichern %1.|\nF.Shifted=a|b|c|\nF.Short=a|\nF.Tab=a|b\tc|\n"
                      "F.Escaped=x\x1cy|x\x1cy|\nF.Single=same\nF.Marks=&Open %1 of %2:|Öffnen %2.|\nF.Untranslated=Open||\n");
    TvxTranslationTable table;
    QVERIFY(table.load(m_lng, nullptr));
    const auto issues = validate(table);
    auto find = [&](const QString &key) {
        QList<TvxIssue> found;
        for (const auto &i : issues)
            if (i.key == key)
                found << i;
        return found;
    };
    QVERIFY(find(QStringLiteral("F.Good")).isEmpty());
    QVERIFY(find(QStringLiteral("F.Untranslated")).isEmpty());
    QCOMPARE(find(QStringLiteral("F.Shifted")).size(), 1);
    QCOMPARE(find(QStringLiteral("F.Shifted")).at(0).severity, TvxIssue::Error);
    QVERIFY(find(QStringLiteral("F.Shifted")).at(0).message.contains(QStringLiteral("3 texts for 2 languages")));
    QCOMPARE(find(QStringLiteral("F.Short")).at(0).severity, TvxIssue::Error);
    QCOMPARE(find(QStringLiteral("F.Tab")).at(0).severity, TvxIssue::Error);
    QCOMPARE(find(QStringLiteral("F.Tab")).at(0).language, 2);
    QCOMPARE(find(QStringLiteral("F.Escaped")).size(), 1);
    QCOMPARE(find(QStringLiteral("F.Escaped")).at(0).severity, TvxIssue::Warning);
    QCOMPARE(find(QStringLiteral("F.Single")).at(0).severity, TvxIssue::Warning);
    const auto marks = find(QStringLiteral("F.Marks"));
    QCOMPARE(marks.size(), 1);
    QCOMPARE(marks.at(0).severity, TvxIssue::Warning);
    for (const char *word : {"placeholders", "accelerator", "punctuation"})
        QVERIFY2(marks.at(0).message.contains(QLatin1String(word)), qPrintable(marks.at(0).message));
    // Another components' delimiter turns the tab into an ordinary character.
    QVERIFY(validate(table, QLatin1Char(';')).size() == issues.size() - 1);
}

void TstInterchange::mergeLetsTheSecondFileWin()
{
    writeTranslationFile(m_lng, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")},
                         {{"Captions", QStringLiteral("F.A"), {QStringLiteral("a"), QStringLiteral("a-de")}},
                          {"Captions", QStringLiteral("F.B"), {QStringLiteral("b"), QStringLiteral("b-de")}}});
    const QString other = m_dir.filePath(QStringLiteral("other.lng"));
    writeTranslationFile(other, {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")},
                         {{"Captions", QStringLiteral("F.B"), {QStringLiteral("b"), QStringLiteral("b;neu"), QStringLiteral("b-fr")}},
                          {"Captions", QStringLiteral("F.A"), {QStringLiteral("a"), QStringLiteral("a-de")}},
                          {"Strings", QStringLiteral("F.IDS_1"), {QStringLiteral("x\ny"), QStringLiteral("x;y")}}},
                         QLatin1Char(';'));
    TvxTranslationTable into, from;
    QVERIFY(into.load(m_lng, nullptr));
    QVERIFY(from.load(other, nullptr));
    const TvxMergeReport report = mergeTables(into, from);
    QCOMPARE(report.added, 1);
    QCOMPARE(report.replaced, 1);
    QCOMPARE(report.unchanged, 1);
    QString error;
    QVERIFY(into.save(&error));
    TvxTranslationTable result;
    QVERIFY(result.load(m_lng, nullptr));
    QCOMPARE(result.delimiter(), QLatin1Char('|'));
    QCOMPARE(result.languageNames().size(), 3);
    QCOMPARE(result.texts(result.indexOf(stCaptions, QStringLiteral("F.B"))),
             (QStringList{QStringLiteral("b"), QStringLiteral("b;neu"), QStringLiteral("b-fr")}));
    QCOMPARE(result.texts(result.indexOf(stStrings, QStringLiteral("F.IDS_1"))),
             (QStringList{QStringLiteral("x\ny"), QStringLiteral("x;y")}));
    QCOMPARE(result.text(result.indexOf(stCaptions, QStringLiteral("F.A")), 2), QStringLiteral("a-de"));
}

QTEST_GUILESS_MAIN(TstInterchange)
#include "tst_interchange.moc"
