// Translation files: save, load and merge of the tables, many forms in one
// file, old-form keys, encodings and damaged input.
#include "vexilitems.h"
#include "vxcomp.h"
#include "vxerrors.h"

#include <QtTest>
#include <QtWidgets/QDialog>
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

class TForm3 : public QWidget
{
    Q_OBJECT
public:
    TForm3()
    {
        setObjectName(QStringLiteral("Form3"));
        tree = new QTreeWidget(this);
        tree->setObjectName(QStringLiteral("tree"));
        new QTreeWidgetItem(tree, {QStringLiteral("Root")});
        vx = new TVexilItems(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
    }
    QTreeWidget *tree;
    TVexilItems *vx;
};

// A form of Qt's own class, as QUiLoader builds it or as a subclass
// without Q_OBJECT reports itself.
struct PlainDialog
{
    explicit PlainDialog(const QString &name, const QString &title, const QString &german)
    {
        dialog.setObjectName(name);
        dialog.setWindowTitle(title);
        button = new QPushButton(title + QStringLiteral(" OK"), &dialog);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexil(&dialog);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
        vx->ReplaceStringValue(vx->Captions(), QStringLiteral("QDialog"), german, 2);
        vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), german + QStringLiteral(" Gut"), 2);
    }
    QDialog dialog;
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
    void delimiterInsideTexts();
    void unsavableTextsRefused();
    void qtClassFormsKeyedByObjectName();
    void twelfthTable();
    void mergeTakesFirstOfRepeatedNames();
    void clearAppliesToUnreadableFile();

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

void TstLangFile::delimiterInsideTexts()
{
    TForm1 form;
    TVexil *vx = form.vx;
    vx->AddString(QStringLiteral("Pipe"), {QStringLiteral("a|b"), QStringLiteral("|")});
    vx->AddString(QStringLiteral("Caret"), {QStringLiteral("x^y"), QStringLiteral("z")});
    vx->SaveAllToFile(m_file, QLatin1Char('|'));
    const QString esc(QChar(28));
    const QString text = readAll(m_file);
    // The dialog text "|S&olid" under its key "|Solid"; a text's own
    // delimiter is written as character 28 and keeps the fields apart.
    QVERIFY(text.contains(QStringLiteral("TForm1.|Solid=") + esc + QStringLiteral("S&olid|\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.Pipe=a") + esc + QStringLiteral("b|") + esc + QStringLiteral("|\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.Caret=x^y|z|\n")));

    TForm1 reader;
    reader.vx->setDlgsCaptions(QStringList{});
    reader.vx->LoadAllFromFile(m_file, true);
    QCOMPARE(reader.vx->GetStringValue(reader.vx->DlgsCaptions(), QStringLiteral("|Solid"), 1), QStringLiteral("|S&olid"));
    QCOMPARE(reader.vx->DlgsCaptions()->lines(), vx->DlgsCaptions()->lines());
    QCOMPARE(reader.vx->Strings()->lines(), vx->Strings()->lines());
    reader.vx->SetActLang(2);
    QCOMPARE(reader.vx->GetText(QStringLiteral("Pipe")), QStringLiteral("|"));

    // Another delimiter leaves "|" as it is and escapes its own character.
    vx->SaveAllToFile(m_file, QLatin1Char('^'));
    QVERIFY(readAll(m_file).contains(QStringLiteral("TForm1.Caret=x") + esc + QStringLiteral("y^z^\n")));
    TForm1 again;
    again.vx->LoadAllFromFile(m_file, true);
    QCOMPARE(again.vx->Strings()->lines(), vx->Strings()->lines());

    // Files without the escape read as they always did, and a single
    // hand-written text may hold it too.
    writeAll(m_file, "[Strings]\nTForm1.Old=a|b|\nTForm1.One=x\x1cy\n");
    TForm1 old;
    QCOMPARE(old.vx->LoadStringsFromFile(m_file, true), 2);
    QCOMPARE(old.vx->Strings()->lines(),
             (QStringList{QStringLiteral("Old\ta\tb\t"), QStringLiteral("One\tx|y\tx|y")}));
}

void TstLangFile::unsavableTextsRefused()
{
    TForm1 form;
    form.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    const QString before = readAll(m_file);
    QVERIFY(!before.isEmpty());

    // Texts holding the characters the format reserves, and keys the file
    // cannot hold, refuse the save with the key named; nothing is written.
    const QList<QPair<TStringsType, QString>> bad{
        {stStrings, QStringLiteral("Bad\tone") + QChar(25) + QStringLiteral("\t")},
        {stStrings, QStringLiteral("Bad\t") + QChar(28) + QStringLiteral("\t")},
        {stStrings, QStringLiteral("Bad=key\tx\t")},
        {stCollections, QStringLiteral("my-tree.Columns[0].Caption\tName\t\t")},
    };
    for (const auto &[type, line] : bad) {
        TForm1 other;
        auto *tree = new QTreeWidget(&other);
        tree->setObjectName(QStringLiteral("my-tree")); // "-" would load back as "["
        tree->setHeaderLabels({QStringLiteral("Name")});
        other.vx->SetTable(type, QStringList{line});
        const QString key = QStringLiteral("TForm1.") + line.left(line.indexOf(QLatin1Char('\t')));
        try {
            other.vx->SaveAllToFile(m_file, QLatin1Char('|'));
            QFAIL(qPrintable(QStringLiteral("saved: ") + key));
        } catch (const EVexilError &e) {
            QVERIFY2(e.message().contains(QLatin1Char('"') + key + QLatin1Char('"')), qPrintable(e.message()));
        }
        QVERIFY_THROWS_EXCEPTION(EVexilError, other.vx->SaveToFile(type, m_file, QLatin1Char('|')));
        QCOMPARE(readAll(m_file), before);
    }

    // Delimiters the format uses itself are refused like the component's own.
    for (char16_t c : {u'\n', u'\r', char16_t(25), char16_t(26), char16_t(28)})
        QCOMPARE(form.vx->SaveToFile(stStrings, m_file, QChar(c)), -1);
    form.vx->SaveAllToFile(m_file, QChar(28));
    QCOMPARE(readAll(m_file), before);
}

namespace {
QStringList s_warnings;
void collectWarnings(QtMsgType type, const QMessageLogContext &, const QString &msg)
{
    if (type == QtWarningMsg)
        s_warnings << msg;
}
} // namespace

void TstLangFile::qtClassFormsKeyedByObjectName()
{
    const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);
    {
        PlainDialog one(QStringLiteral("Dialog1"), QStringLiteral("First"), QStringLiteral("Erster"));
        PlainDialog two(QStringLiteral("Dialog2"), QStringLiteral("Second"), QStringLiteral("Zweiter"));
        one.vx->SaveAllToFile(m_file, QLatin1Char('|'));
        two.vx->SaveAllToFile(m_file, QLatin1Char('|'));
        const QString text = readAll(m_file);
        QVERIFY(text.contains(QStringLiteral("Dialog1.QDialog=First|Erster|")));
        QVERIFY(text.contains(QStringLiteral("Dialog2.Button1=Second OK|Zweiter Gut|")));
        QVERIFY(!text.contains(QStringLiteral("\nQDialog.")));

        for (const auto &[name, title, german] : {std::tuple{"Dialog1", "First", "Erster"},
                                                  std::tuple{"Dialog2", "Second", "Zweiter"}}) {
            PlainDialog reader(QString::fromLatin1(name), QStringLiteral("?"), QStringLiteral("?"));
            reader.vx->LoadAllFromFile(m_file, true);
            QCOMPARE(reader.dialog.windowTitle(), QString::fromLatin1(title));
            reader.vx->SetActLang(2);
            QCOMPARE(reader.dialog.windowTitle(), QString::fromLatin1(german));
            QCOMPARE(reader.button->text(), QString::fromLatin1(german) + QStringLiteral(" Gut"));
            QVERIFY(reader.vx->MergeFromFile(stCaptions, m_file));
            QCOMPARE(reader.vx->Captions()->count(), 2);
        }
    }
    qInstallMessageHandler(previous);
    // One warning for the class, however many forms of it were saved and loaded.
    QCOMPARE(s_warnings.size(), 1);
    QVERIFY(s_warnings.at(0).contains(QLatin1String("QDialog")));
    s_warnings.clear();

    // A file from before: its class-name keys still load, until the file
    // holds keys of the object name.
    writeAll(m_file, "[Captions]\nQDialog.QDialog=Old|Alt|\nQDialog.Button1=OK|Gut|\n");
    {
        PlainDialog reader(QStringLiteral("Dialog1"), QStringLiteral("?"), QStringLiteral("?"));
        reader.vx->LoadAllFromFile(m_file, true);
        QCOMPARE(reader.dialog.windowTitle(), QStringLiteral("Old"));
        QCOMPARE(reader.button->text(), QStringLiteral("OK"));
        PlainDialog two(QStringLiteral("Dialog2"), QStringLiteral("Second"), QStringLiteral("Zweiter"));
        two.vx->SaveToFile(stCaptions, m_file, QLatin1Char('|'));
        reader.vx->LoadAllFromFile(m_file, true); // the old keys are still read
        QCOMPARE(reader.dialog.windowTitle(), QStringLiteral("Old"));
        reader.vx->AddString(QStringLiteral("Own"), {QStringLiteral("own")});
        reader.vx->SaveStringsToFile(m_file, QLatin1Char('|'));
        reader.dialog.setWindowTitle(QStringLiteral("Mine"));
        reader.vx->LoadAllFromFile(m_file, true); // now they belong to others
        QCOMPARE(reader.dialog.windowTitle(), QStringLiteral("Mine"));
        QVERIFY(readAll(m_file).contains(QStringLiteral("QDialog.Button1=OK|Gut|")));
    }

    // Without an object name the class name is all there is: it is used,
    // with a warning.
    qInstallMessageHandler(collectWarnings);
    {
        PlainDialog nameless(QString(), QStringLiteral("Nameless"), QStringLiteral("Namenlos"));
        nameless.vx->SaveToFile(stCaptions, m_file, QLatin1Char('|'));
        nameless.vx->SaveToFile(stHints, m_file, QLatin1Char('|'));
    }
    qInstallMessageHandler(previous);
    QCOMPARE(s_warnings.size(), 1);
    QVERIFY(s_warnings.at(0).contains(QLatin1String("no object name")));
    QVERIFY(readAll(m_file).contains(QStringLiteral("QDialog.QDialog=Nameless|Namenlos|")));
}

void TstLangFile::twelfthTable()
{
    writeAll(m_file, "[ListView_TreeView_Items]\nTForm3.tree.Items-0+.Caption=Root|Wurzel|\n"
                     "TForm3.gone.Items-0+.Caption=x|y|\nTForm3.gone.Items-1+.Caption=x|y|\n");
    TForm3 form;
    TvxStringList *items = form.vx->Items();
    QVERIFY(items);
    QCOMPARE(form.vx->LoadFromFile(stListView_TreeView_Items, m_file, true), 3);
    // Lines of components the form lacks go; the tree's own line stays.
    QCOMPARE(items->lines(), QStringList{QStringLiteral("tree.Items[0].Caption\tRoot\tWurzel\t")});
    form.vx->LoadAllFromFile(m_file, true);
    QCOMPARE(items->count(), 1);

    QVERIFY(form.vx->MergeAllFromFile(m_file));
    QVERIFY(!form.vx->BulkLoading());
    QVERIFY(form.vx->MergeAllFromFileDNC(m_file));
    QVERIFY(!form.vx->BulkLoading());

    items->append(QStringLiteral("tree.Items[1].Caption\tChild\tKind\t"));
    form.vx->SaveAllToFile(m_file, QLatin1Char('|'));
    QVERIFY(readAll(m_file).contains(QStringLiteral("TForm3.tree.Items-1+.Caption=Child|Kind|")));
    form.vx->ChangeLangDelim(QLatin1Char('\t'), QLatin1Char('~'));
    QCOMPARE(items->at(0), QStringLiteral("tree.Items[0].Caption~Root~Wurzel~"));
}

void TstLangFile::mergeTakesFirstOfRepeatedNames()
{
    TForm1 form;
    form.vx->setStrings({QStringLiteral("A\tfirst\t"), QStringLiteral("a\tsecond\t"), QStringLiteral("B\tb\t"),
                         QStringLiteral("B\tb again\t")});
    writeAll(m_file, "[Strings]\nTForm1.B=file|\n");
    QVERIFY(form.vx->MergeFromFile(stStrings, m_file));
    QCOMPARE(form.vx->Strings()->lines(), (QStringList{QStringLiteral("B\tfile\t"), QStringLiteral("A\tfirst\t")}));
}

void TstLangFile::clearAppliesToUnreadableFile()
{
    // A directory exists but cannot be read as a file.
    const QString unreadable = m_dir.filePath(QStringLiteral("unreadable.lng"));
    QVERIFY(QDir().mkpath(unreadable));
    TForm1 form;
    form.vx->AddString(QStringLiteral("S"), {QStringLiteral("s")});
    QCOMPARE(form.vx->LoadStringsFromFile(unreadable, false), -1);
    QCOMPARE(form.vx->Strings()->count(), 1);
    QVERIFY(!form.vx->MergeFromFile(stStrings, unreadable)); // a merge keeps what it has
    QCOMPARE(form.vx->Strings()->count(), 1);
    QCOMPARE(form.vx->LoadStringsFromFile(unreadable, true), -1);
    QCOMPARE(form.vx->Strings()->count(), 0);

    form.vx->AddString(QStringLiteral("S"), {QStringLiteral("s")});
    form.vx->LoadAllFromFile(unreadable, false);
    QCOMPARE(form.vx->Strings()->count(), 1);
    QVERIFY(form.vx->DlgsCaptions()->count() > 0);
    form.vx->LoadAllFromFile(unreadable, true);
    QCOMPARE(form.vx->Strings()->count(), 0);
    QCOMPARE(form.vx->DlgsCaptions()->count(), 0);
    QVERIFY(!form.vx->BulkLoading());

    // A missing file changes nothing, Clear or not.
    form.vx->AddString(QStringLiteral("S"), {QStringLiteral("s")});
    form.vx->LoadAllFromFile(m_dir.filePath(QStringLiteral("missing.lng")), true);
    QCOMPARE(form.vx->Strings()->count(), 1);
}

QTEST_MAIN(TstLangFile)
#include "tst_langfile.moc"
