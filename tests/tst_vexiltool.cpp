// The vexil program as builds and people run it: help for every command,
// exit codes and messages for bad arguments, missing and damaged files,
// and whole export, import, check and scan runs on real files.
#include "memini.h"
#include "vxfileformat.h"
#include "vxtranslationtable.h"

#include <QtCore/QProcess>
#include <QtTest>

using Vexil::Interchange::TvxTranslationTable;

namespace {

struct Result
{
    int code = -1;
    QString out;
    QString err;
};

Result vexil(const QStringList &args, const QString &workDir = QString())
{
    QProcess p;
    if (!workDir.isEmpty())
        p.setWorkingDirectory(workDir);
    p.start(QStringLiteral(VEXIL_TOOL_EXE), args);
    Result r;
    if (!p.waitForFinished(120000)) {
        p.kill();
        p.waitForFinished();
        return r;
    }
    r.code = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    r.out = QString::fromUtf8(p.readAllStandardOutput());
    r.err = QString::fromUtf8(p.readAllStandardError());
    return r;
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

} // namespace

class TstVexilTool : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void helpForEveryCommand_data();
    void helpForEveryCommand();
    void badArgumentsExitWithTwo_data();
    void badArgumentsExitWithTwo();
    void missingAndDamagedInputExitWithThree_data();
    void missingAndDamagedInputExitWithThree();
    void exportImportRoundTrip();
    void importReportsUnmatchedMessages();
    void importQtAddsTheApplicationsLanguage();
    void validateFailsOnBrokenFile();
    void statsAndMerge();
    void scanAndUnusedPrintWhatTheExpertShows();

private:
    QTemporaryDir m_dir;
    QString m_lng;
};

void TstVexilTool::initTestCase()
{
    m_lng = m_dir.filePath(QStringLiteral("app.lng"));
    TMemIniFile ini(m_lng);
    Vexil::FileFormat::writeHeader(ini, QLatin1Char('|'), {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")});
    auto put = [&](const char *section, const char *key, const QStringList &texts) {
        ini.WriteString(QLatin1String(section), QLatin1String(key), TvxTranslationTable::joinValue(texts, QLatin1Char('|')));
    };
    put("Captions", "TForm1.Button1.Caption", {QStringLiteral("&Open"), QStringLiteral("Ö&ffnen"), QStringLiteral("&Ouvrir")});
    put("Captions", "TForm1.Button2.Caption", {QStringLiteral("&Close"), QString(), QString()});
    put("Multilines", "TForm1.Memo1.Lines", {QStringLiteral("a|b\nc"), QStringLiteral("a|b\nc (de)"), QString()});
    put("Strings", "TForm1.IDS_1", {QStringLiteral("Saved"), QStringLiteral("Gespeichert"), QString()});
    put("Strings", "TForm1.IDS_2", {QStringLiteral("Unused"), QString(), QString()});
    ini.UpdateFile();
}

void TstVexilTool::helpForEveryCommand_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("word");
    QTest::newRow("overview") << QString() << QStringLiteral("import-qt");
    QTest::newRow("export") << QStringLiteral("export") << QStringLiteral("--format");
    QTest::newRow("import") << QStringLiteral("import") << QStringLiteral("--language");
    QTest::newRow("import-qt") << QStringLiteral("import-qt") << QStringLiteral("context");
    QTest::newRow("stats") << QStringLiteral("stats") << QStringLiteral("missing");
    QTest::newRow("validate") << QStringLiteral("validate") << QStringLiteral("--strict");
    QTest::newRow("merge") << QStringLiteral("merge") << QStringLiteral("second");
    QTest::newRow("scan") << QStringLiteral("scan") << QStringLiteral("--component");
    QTest::newRow("unused") << QStringLiteral("unused") << QStringLiteral("GetText");
}

void TstVexilTool::helpForEveryCommand()
{
    QFETCH(QString, command);
    QFETCH(QString, word);
    QStringList args;
    if (!command.isEmpty())
        args << command;
    args << QStringLiteral("--help");
    const Result r = vexil(args);
    QCOMPARE(r.code, 0);
    QVERIFY2(r.out.contains(word), qPrintable(r.out));
    if (!command.isEmpty())
        QVERIFY2(r.out.startsWith(QStringLiteral("Usage: vexil ") + command + QLatin1Char(' ')), qPrintable(r.out));
}

void TstVexilTool::badArgumentsExitWithTwo_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("message");
    QTest::newRow("nothing") << QStringList() << QStringLiteral("Usage");
    QTest::newRow("unknown command") << QStringList{QStringLiteral("frobnicate")} << QStringLiteral("unknown command");
    QTest::newRow("unknown option") << QStringList{QStringLiteral("stats"), QStringLiteral("--bogus"), QStringLiteral("x")} << QStringLiteral("bogus");
    QTest::newRow("missing argument") << QStringList{QStringLiteral("export")} << QStringLiteral("missing arguments");
    QTest::newRow("bad format") << QStringList{QStringLiteral("export"), QStringLiteral("--format"), QStringLiteral("xliff"), QStringLiteral("a.lng")}
                                << QStringLiteral("unknown format");
    QTest::newRow("bad category") << QStringList{QStringLiteral("export"), QStringLiteral("--category"), QStringLiteral("Titles"), QStringLiteral("a.lng")}
                                  << QStringLiteral("unknown category");
    QTest::newRow("source language") << QStringList{QStringLiteral("export"), QStringLiteral("--language"), QStringLiteral("english"), QStringLiteral("app.lng")}
                                     << QStringLiteral("source language");
    QTest::newRow("import what") << QStringList{QStringLiteral("import"), QStringLiteral("x.xliff"), QStringLiteral("app.lng")}
                                 << QStringLiteral("not a .ts or .po");
}

void TstVexilTool::badArgumentsExitWithTwo()
{
    QFETCH(QStringList, args);
    QFETCH(QString, message);
    const QByteArray before = readAll(m_lng);
    const Result r = vexil(args, m_dir.path());
    QCOMPARE(r.code, 2);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
    QCOMPARE(readAll(m_lng), before);
}

void TstVexilTool::missingAndDamagedInputExitWithThree_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QByteArray>("damaged");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing lng") << QStringList{QStringLiteral("stats"), QStringLiteral("nope.lng")} << QByteArray()
                                 << QStringLiteral("nope.lng: no such file");
    QTest::newRow("binary lng") << QStringList{QStringLiteral("validate"), QStringLiteral("bad.lng")}
                                << QByteArray("\x7f" "ELF\0\0\0", 7) << QStringLiteral("bad.lng: damaged");
    QTest::newRow("missing ts") << QStringList{QStringLiteral("import"), QStringLiteral("nope.ts"), QStringLiteral("app.lng")}
                                << QByteArray() << QStringLiteral("nope.ts: no such file");
    QTest::newRow("damaged ts") << QStringList{QStringLiteral("import"), QStringLiteral("bad.ts"), QStringLiteral("app.lng")}
                                << QByteArray("<TS>\n<context>\n") << QStringLiteral("bad.ts: damaged, line");
    QTest::newRow("damaged po") << QStringList{QStringLiteral("import"), QStringLiteral("bad.po"), QStringLiteral("app.lng")}
                                << QByteArray("msgid \"x\nmsgstr \"\"\n") << QStringLiteral("bad.po: damaged, line 1");
    QTest::newRow("missing source") << QStringList{QStringLiteral("scan"), QStringLiteral("nope.cpp")} << QByteArray()
                                    << QStringLiteral("nope.cpp: no such file");
}

void TstVexilTool::missingAndDamagedInputExitWithThree()
{
    QFETCH(QStringList, args);
    QFETCH(QByteArray, damaged);
    QFETCH(QString, message);
    if (!damaged.isEmpty())
        writeBytes(m_dir.filePath(args.at(1)), damaged);
    const QByteArray before = readAll(m_lng);
    const Result r = vexil(args, m_dir.path());
    QCOMPARE(r.code, 3);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
    QCOMPARE(readAll(m_lng), before);
}

void TstVexilTool::exportImportRoundTrip()
{
    const QString out = m_dir.filePath(QStringLiteral("tr"));
    for (const QString &format : {QStringLiteral("ts"), QStringLiteral("po")}) {
        Result r = vexil({QStringLiteral("export"), QStringLiteral("--format"), format, m_lng, QStringLiteral("-o"), out});
        QCOMPARE(r.code, 0);
        const QString de = out + QStringLiteral("/app_de.") + format, fr = out + QStringLiteral("/app_fr.") + format;
        QVERIFY2(QFileInfo::exists(de) && QFileInfo::exists(fr), qPrintable(r.out + r.err));
        QVERIFY2(r.out.contains(QStringLiteral("5 messages, language 2 (GERMAN)")), qPrintable(r.out));

        // A translator fills in the French caption; the import takes exactly that.
        QByteArray bytes = readAll(fr);
        if (format == QLatin1String("ts"))
            bytes.replace("<source>&amp;Close</source>\n        <comment>TForm1.Button2.Caption</comment>\n"
                          "        <translation type=\"unfinished\"></translation>",
                          "<source>&amp;Close</source>\n        <comment>TForm1.Button2.Caption</comment>\n"
                          "        <translation>&amp;Fermer</translation>");
        else
            bytes.replace("msgid \"&Close\"\nmsgstr \"\"", "msgid \"&Close\"\nmsgstr \"&Fermer\"");
        writeBytes(fr, bytes);
        const QString copy = m_dir.filePath(QStringLiteral("copy.lng"));
        QFile::remove(copy);
        QVERIFY(QFile::copy(m_lng, copy));
        r = vexil({QStringLiteral("import"), de, fr, copy});
        QCOMPARE(r.code, 0);
        QVERIFY2(r.out.contains(QStringLiteral("language 3 (FRENCH): 1 updated, 1 unchanged")), qPrintable(r.out));
        TvxTranslationTable table;
        QVERIFY(table.load(copy, nullptr));
        QCOMPARE(table.text(table.indexOf(stCaptions, QStringLiteral("TForm1.Button2.Caption")), 3), QStringLiteral("&Fermer"));
        QByteArray expected = readAll(m_lng);
        expected.replace("TForm1.Button2.Caption=&Close|||", "TForm1.Button2.Caption=&Close||&Fermer|");
        QCOMPARE(readAll(copy), expected);
    }
}

void TstVexilTool::importReportsUnmatchedMessages()
{
    const QString po = m_dir.filePath(QStringLiteral("stray_2.po"));
    writeBytes(po, "msgid \"\"\nmsgstr \"\"\n\"Content-Type: text/plain; charset=UTF-8\\n\"\n\n"
                   "msgctxt \"TForm1/Captions|TForm1.Gone.Caption\"\nmsgid \"Gone\"\nmsgstr \"Weg\"\n");
    const QByteArray before = readAll(m_lng);
    Result r = vexil({QStringLiteral("import"), po, m_lng});
    QCOMPARE(r.code, 0);
    QVERIFY2(r.err.contains(QStringLiteral("line 5: TForm1/Captions TForm1.Gone.Caption: no matching entry")), qPrintable(r.err));
    QCOMPARE(readAll(m_lng), before);
    r = vexil({QStringLiteral("import"), QStringLiteral("--strict"), po, m_lng});
    QCOMPARE(r.code, 1);
    QCOMPARE(readAll(m_lng), before);
}

void TstVexilTool::importQtAddsTheApplicationsLanguage()
{
    const QString one = m_dir.filePath(QStringLiteral("one.lng")), ts = m_dir.filePath(QStringLiteral("app_fr.ts"));
    writeBytes(one, "[OPTIONS]\nDELIMITER=|\n\n[Language names - for internal use only!]\nLanguage_1=ENGLISH\n\n"
                    "[Captions]\nMainWindow.btnOpen.Caption=&Open|\nMainWindow.MainWindow=Editor|\n\n");
    writeBytes(ts, "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n<TS version=\"2.1\" language=\"fr_FR\">\n"
                   "<context><name>MainWindow</name>\n"
                   "<message><source>&amp;Open</source><translation>&amp;Ouvrir</translation></message>\n"
                   "<message><source>Quit</source><translation>Quitter</translation></message>\n"
                   "</context>\n</TS>\n");
    const Result r = vexil({QStringLiteral("import-qt"), ts, one});
    QCOMPARE(r.code, 0);
    QVERIFY2(r.out.contains(QStringLiteral("language 2 (FRENCH): 1 updated")), qPrintable(r.out));
    QVERIFY2(r.err.contains(QStringLiteral("MainWindow \"Quit\": no matching entry")), qPrintable(r.err));
    const QByteArray bytes = readAll(one);
    QVERIFY2(bytes.contains("Language_2=FRENCH\n"), bytes.constData());
    QVERIFY(bytes.contains("MainWindow.btnOpen.Caption=&Open|&Ouvrir|\n"));
    QVERIFY(bytes.contains("MainWindow.MainWindow=Editor|\n"));
}

void TstVexilTool::validateFailsOnBrokenFile()
{
    Result r = vexil({QStringLiteral("validate"), m_lng});
    QCOMPARE(r.code, 0);
    QVERIFY2(r.out.contains(QStringLiteral("0 errors")), qPrintable(r.out));
    const QString broken = m_dir.filePath(QStringLiteral("broken.lng"));
    writeBytes(broken, "[OPTIONS]\nDELIMITER=|\n[Language names - for internal use only!]\nLanguage_1=A\nLanguage_2=B\n"
                       "[Captions]\nF.X=a|b|c|\nF.Y=%1|x|\n");
    r = vexil({QStringLiteral("validate"), broken});
    QCOMPARE(r.code, 1);
    QVERIFY2(r.out.contains(QStringLiteral("[Captions] F.X: error: 3 texts for 2 languages")), qPrintable(r.out));
    QVERIFY(r.out.contains(QStringLiteral("F.Y (language 2): warning:")));
    QVERIFY(r.out.contains(QStringLiteral("1 errors, 1 warnings")));
    r = vexil({QStringLiteral("validate"), QStringLiteral("--quiet"), broken});
    QVERIFY(!r.out.contains(QStringLiteral("warning:")));
}

void TstVexilTool::statsAndMerge()
{
    Result r = vexil({QStringLiteral("stats"), m_lng});
    QCOMPARE(r.code, 0);
    const QStringList lines = r.out.split(QLatin1Char('\n'));
    QVERIFY(lines.at(0).startsWith(QStringLiteral("Form")));
    QVERIFY(lines.at(0).contains(QStringLiteral("Missing")));
    // TForm1 Captions in French: two entries, one translated, one missing.
    const QRegularExpression fr(QStringLiteral("^TForm1 +Captions +3 FRENCH +2 +1 +1$"), QRegularExpression::MultilineOption);
    QVERIFY2(fr.match(r.out).hasMatch(), qPrintable(r.out));
    QVERIFY(r.out.contains(QStringLiteral("Total: 15 texts, 9 translated, 6 missing")));

    const QString other = m_dir.filePath(QStringLiteral("other.lng")), merged = m_dir.filePath(QStringLiteral("merged.lng"));
    writeBytes(other, "[OPTIONS]\nDELIMITER=|\n[Captions]\nTForm1.Button2.Caption=&Close|&Schlie\xc3\x9f" "en|&Fermer|\n");
    const QByteArray before = readAll(m_lng);
    r = vexil({QStringLiteral("merge"), m_lng, other, QStringLiteral("-o"), merged});
    QCOMPARE(r.code, 0);
    QVERIFY2(r.out.contains(QStringLiteral("0 added, 1 replaced, 0 unchanged")), qPrintable(r.out));
    QCOMPARE(readAll(m_lng), before);
    QByteArray expected = before;
    expected.replace("TForm1.Button2.Caption=&Close|||", "TForm1.Button2.Caption=&Close|&Schlie\xc3\x9f" "en|&Fermer|");
    QCOMPARE(readAll(merged), expected);
}

void TstVexilTool::scanAndUnusedPrintWhatTheExpertShows()
{
    const QString unit = m_dir.filePath(QStringLiteral("form1.cpp"));
    writeBytes(unit, "#include \"form1.h\"\nvoid Form1::save()\n{\n    statusBar()->showMessage(\"Saved\\tnow\");\n"
                     "    setWindowTitle(Vexil1->GetText(\"IDS_1\"));\n}\n");
    Result r = vexil({QStringLiteral("scan"), unit, QStringLiteral("--own-unit"), QStringLiteral("--start"), QStringLiteral("2")});
    QCOMPARE(r.code, 0);
    QStringList lines = r.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.at(0), QStringLiteral("String ID:\tString constant:\tWill be replaced by:\tSource line:"));
    QVERIFY2(lines.size() >= 2, qPrintable(r.out));
    const QStringList cells = lines.at(1).split(QLatin1Char('\t'));
    QCOMPARE(cells.size(), 4);
    QVERIFY2(cells.at(0).startsWith(QStringLiteral("IDS_")), qPrintable(lines.at(1)));
    QCOMPARE(cells.at(1), QStringLiteral("Saved\\tnow"));
    QVERIFY(cells.at(2).contains(QStringLiteral("ui->Vexil1")));

    r = vexil({QStringLiteral("unused"), m_lng, unit});
    QCOMPARE(r.code, 0);
    QCOMPARE(r.out, QStringLiteral("TForm1.IDS_2\n"));
    r = vexil({QStringLiteral("unused"), QStringLiteral("--form"), QStringLiteral("TForm1"), m_lng, unit});
    QCOMPARE(r.out, QStringLiteral("IDS_2\n"));
}

QTEST_GUILESS_MAIN(TstVexilTool)
#include "tst_vexiltool.moc"
