// Translation files: save, load and merge of the tables, many forms in one
// file, old-form keys, encodings and damaged input.
#include "vxcomp.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTreeWidget>

class TForm1 : public QWidget
{
    Q_OBJECT
public:
    TForm1()
    {
        setObjectName(QStringLiteral("Form1"));
        setWindowTitle(QStringLiteral("First"));
        button = new QPushButton(QStringLiteral("OK"), this);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
        vx->BuildList();
    }
    QPushButton *button;
    TVexil *vx;
};

class TForm2 : public QWidget
{
    Q_OBJECT
public:
    TForm2()
    {
        setObjectName(QStringLiteral("Form2"));
        button = new QPushButton(QStringLiteral("Cancel"), this);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
    }
    QPushButton *button;
    TVexil *vx;
};

static QString readAll(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(f.readAll());
}

static void writeAll(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

class TstLangFile : public QObject
{
    Q_OBJECT
private slots:
    void init() { QVERIFY(m_dir.isValid()); m_file = m_dir.filePath(QStringLiteral("app.lng")); QFile::remove(m_file); }
    void saveWritesFormatAndLoadRoundTrips();
    void manyFormsShareOneFile();
    void oldFormKeys();
    void bracketsAndSingleTexts();
    void mergeLetsTheFileWin();
    void mergeAllLeavesBulkLoadingSet();
    void refusedAndFailedSaves();
    void legacyAndDamagedFiles();

private:
    QTemporaryDir m_dir;
    QString m_file;
};

void TstLangFile::saveWritesFormatAndLoadRoundTrips()
{
    TForm1 form;
    TVexil *vx = form.vx;
    vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Gut"), 2);
    vx->AddString(QStringLiteral("IDS_MULTI"), {QStringLiteral("line one\r\nline two"), QStringLiteral("Zeile = 1|2")});
    vx->SetNumLang(3);
    vx->SetLangNames({QStringLiteral("English"), QStringLiteral("German")}); // no name for language 3
    QCOMPARE(vx->SaveToFile(stCaptions, m_file, QLatin1Char('^')), vx->Captions()->count());
    QCOMPARE(vx->SaveStringsToFile(m_file, QLatin1Char('^')), 1);

    const QString text = readAll(m_file);
    QVERIFY(text.contains(QStringLiteral("[OPTIONS]\nDELIMITER=^\n")));
    QVERIFY(text.contains(QStringLiteral("Language_1=ENGLISH\nLanguage_2=GERMAN\nLanguage_3=Language 3\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.Button1=OK^Gut^\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.IDS_MULTI=line one") + QChar(25) + QChar(26)
                          + QStringLiteral("line two^Zeile = 1|2^\n")));

    TForm1 other;
    QCOMPARE(other.vx->LoadFromFile(stCaptions, m_file, true), 2);
    QCOMPARE(other.vx->LoadStringsFromFile(m_file, true), 1);
    QVERIFY(other.vx->Captions()->lines().contains(QStringLiteral("Button1\tOK\tGut\t")));
    QCOMPARE(other.vx->Captions()->at(0).section(QLatin1Char('\t'), 0, 0), QStringLiteral("TForm1"));
    other.vx->SetActLang(2);
    QCOMPARE(other.button->text(), QStringLiteral("Gut"));
    QCOMPARE(other.vx->GetText(QStringLiteral("IDS_MULTI")), QStringLiteral("Zeile = 1|2"));
    other.vx->SetActLang(1);
    QCOMPARE(other.vx->GetText(QStringLiteral("IDS_MULTI")), QStringLiteral("line one\r\nline two"));

    // Language names of the file replace the component's; the count stays.
    QCOMPARE(other.vx->NumOfLanguages(), 2);
    QCOMPARE(other.vx->LangNames()->lines(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    QCOMPARE(other.vx->LoadFromFile(stCaptions, m_dir.filePath(QStringLiteral("missing.lng")), true), -1);
}

void TstLangFile::manyFormsShareOneFile()
{
    TForm1 one;
    TForm2 two;
    one.vx->ReplaceStringValue(one.vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Gut"), 2);
    two.vx->ReplaceStringValue(two.vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Abbrechen"), 2);
    one.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    two.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    one.vx->ReplaceStringValue(one.vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Prima"), 2);
    one.vx->SaveAllToFile(m_file, QLatin1Char('|')); // rewrites only its own keys

    const QString text = readAll(m_file);
    QVERIFY(text.contains(QStringLiteral("TForm1.Button1=OK|Prima|")));
    QVERIFY(text.contains(QStringLiteral("TForm2.Button1=Cancel|Abbrechen|")));
    QCOMPARE(text.count(QStringLiteral("[Captions]")), 1);

    TForm2 reader;
    reader.vx->LoadAllFromFile(m_file, true);
    QVERIFY(reader.vx->Captions()->lines().contains(QStringLiteral("Button1\tCancel\tAbbrechen\t")));
    QVERIFY(!reader.vx->Captions()->text().contains(QStringLiteral("Prima")));
    reader.vx->SetActLang(2);
    QCOMPARE(reader.button->text(), QStringLiteral("Abbrechen"));
}

void TstLangFile::oldFormKeys()
{
    writeAll(m_file, "[Captions]\nForm1.Button1=OK|Alt|\nTForm2.Button1=x|y|\n\n[Hints]\nForm1.Button1=h|H|\n");
    TForm1 form;
    form.vx->setCaptions(QStringList{});
    QCOMPARE(form.vx->LoadFromFile(stCaptions, m_file, true), 2);
    QVERIFY(form.vx->Captions()->lines().contains(QStringLiteral("Button1\tOK\tAlt\t")));

    form.vx->SaveToFile(stCaptions, m_file, QLatin1Char('|'));
    form.vx->SaveToFile(stHints, m_file, QLatin1Char('|'));
    const QString text = readAll(m_file);
    QVERIFY(!text.contains(QStringLiteral("\nForm1.Button1=OK")));
    QVERIFY(text.contains(QStringLiteral("TForm2.Button1=x|y|")));
    QVERIFY(!text.contains(QStringLiteral("\nForm1.Button1=h|H|")));
    QVERIFY2(text.contains(QStringLiteral("TForm1.Button1=||")), qPrintable(text));
}

void TstLangFile::bracketsAndSingleTexts()
{
    TForm1 form;
    auto *tree = new QTreeWidget(&form);
    tree->setObjectName(QStringLiteral("tree"));
    tree->setHeaderLabels({QStringLiteral("Name")});
    form.vx->BuildList();
    form.vx->ReplaceStringValue(form.vx->Collections(), QStringLiteral("tree.Columns[0].Caption"),
                                QStringLiteral("Titel"), 2);
    form.vx->SaveToFile(stCollections, m_file, QLatin1Char(';'));
    QVERIFY(readAll(m_file).contains(QStringLiteral("TForm1.tree.Columns-0+.Caption=Name;Titel;")));

    // A hand-written value without any file delimiter gives its text to the
    // first two languages and has no closing delimiter.
    QFile f(m_file);
    QVERIFY(f.open(QIODevice::Append));
    f.write("[Strings]\nTForm1.Single=alone\n");
    f.close();
    TForm1 reader;
    auto *twin = new QTreeWidget(&reader);
    twin->setObjectName(QStringLiteral("tree"));
    twin->setHeaderLabels({QStringLiteral("Name")});
    QCOMPARE(reader.vx->LoadFromFile(stCollections, m_file, true), 1);
    QCOMPARE(reader.vx->Collections()->lines(), QStringList{QStringLiteral("tree.Columns[0].Caption\tName\tTitel\t")});
    reader.vx->SetActLang(2);
    QCOMPARE(twin->headerItem()->text(0), QStringLiteral("Titel"));
    reader.vx->LoadStringsFromFile(m_file, true);
    QCOMPARE(reader.vx->Strings()->lines(), QStringList{QStringLiteral("Single\talone\talone")});
}

void TstLangFile::mergeLetsTheFileWin()
{
    TForm1 form;
    TVexil *vx = form.vx;
    vx->setStrings({QStringLiteral("A\ta\tA-de\t"), QStringLiteral("B\tb\tB-de\t")});
    writeAll(m_file, "[Strings]\nTForm1.b=file b|\nTForm1.C=c|c-de|\n");
    QVERIFY(vx->MergeFromFile(stStrings, m_file));
    QCOMPARE(vx->Strings()->lines(), (QStringList{QStringLiteral("b\tfile b\t"), QStringLiteral("C\tc\tc-de\t"),
                                                  QStringLiteral("A\ta\tA-de\t")}));
    QVERIFY(!vx->MergeFromFile(stStrings, m_dir.filePath(QStringLiteral("none.lng"))));
    QVERIFY(!vx->MergeFromFile(stListView_TreeView_Items, m_file));
    QVERIFY(!vx->BulkLoading());
}

void TstLangFile::mergeAllLeavesBulkLoadingSet()
{
    TForm1 form;
    form.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    form.vx->ReplaceStringValue(form.vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Gut"), 2);
    form.vx->SetActLang(2);
    QCOMPARE(form.button->text(), QStringLiteral("Gut"));
    // The eleven published tables merge; the twelfth is missing, so the
    // merge fails without applying the language and bulk loading stays set.
    QVERIFY(!form.vx->MergeAllFromFile(m_file));
    QVERIFY(form.vx->BulkLoading());
    QCOMPARE(form.button->text(), QStringLiteral("Gut"));
    QVERIFY(form.vx->Captions()->lines().contains(QStringLiteral("Button1\tOK\t\t")));
    form.vx->SetTranslateType(ttGetDefault);
    form.vx->LoadAllFromFile(m_file, true);
    QVERIFY(!form.vx->BulkLoading());
    QCOMPARE(form.button->text(), QStringLiteral("OK")); // the file has no German text: language 1 instead
}

void TstLangFile::refusedAndFailedSaves()
{
    TForm1 form;
    QCOMPARE(form.vx->SaveToFile(stCaptions, m_file, QLatin1Char('\t')), -1);
    QVERIFY(!QFile::exists(m_file));
    QCOMPARE(form.vx->SaveToFile(stListView_TreeView_Items, m_file, QLatin1Char('|')), -1);
    QVERIFY(!QFile::exists(m_file));

    // A file that cannot be written raises and leaves what was there.
    const QString dir = m_dir.filePath(QStringLiteral("a-directory"));
    QVERIFY(QDir().mkpath(dir + QStringLiteral("/inside")));
    QVERIFY_THROWS_EXCEPTION(EVexilError, form.vx->SaveAllToFile(dir, QLatin1Char('|')));
    QVERIFY(QFileInfo(dir + QStringLiteral("/inside")).isDir());
    QVERIFY_THROWS_EXCEPTION(EVexilError, form.vx->SaveToFile(stCaptions, dir + QStringLiteral("/inside/x/y.lng"), QLatin1Char('|')));
    QCOMPARE(QDir(dir).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{QStringLiteral("inside")});
}

void TstLangFile::legacyAndDamagedFiles()
{
    // A single-byte file from an older tool: still readable, and saving
    // another form into it keeps its entries.
    writeAll(m_file, "[Captions]\nTForm2.Button1=Cancel|Schlie\xdf" "en|\n");
    TForm2 legacy;
    QCOMPARE(legacy.vx->LoadFromFile(stCaptions, m_file, true), 1);
    QVERIFY(legacy.vx->Captions()->lines().contains(QStringLiteral("Button1\tCancel\tSchließen\t")));
    TForm1 other;
    other.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    TForm2 again;
    again.vx->LoadFromFile(stCaptions, m_file, true);
    QVERIFY(again.vx->Captions()->lines().contains(QStringLiteral("Button1\tCancel\tSchließen\t")));

    // Garbage, a lone header, an empty delimiter and a huge line: defined
    // results, no crash, nothing else lost.
    QByteArray garbage;
    for (int i = 0; i < 4096; ++i)
        garbage.append(char((i * 7919) & 0xff));
    for (const QByteArray &bytes : {garbage, QByteArray("[Captions"), QByteArray("[OPTIONS]\nDELIMITER=\n[Strings]\nTForm1.X=a\n"),
                                    QByteArray("[Strings]\nTForm1.Big=") + QByteArray(2 << 20, 'x') + "|\n"}) {
        writeAll(m_file, bytes);
        TForm1 form;
        form.vx->AddString(QStringLiteral("Kept"), {QStringLiteral("k")});
        form.vx->LoadStringsFromFile(m_file, false);
        QCOMPARE(form.vx->GetText(QStringLiteral("Kept")), QStringLiteral("k"));
        QVERIFY(form.vx->MergeAllFromFileDNC(m_file) || form.vx->BulkLoading());
        QCOMPARE(form.vx->GetText(QStringLiteral("Kept")), QStringLiteral("k"));
    }
}

QTEST_MAIN(TstLangFile)
#include "tst_langfile.moc"
