// The grid editor's file commands: one category saved from the grid's cells
// into a translation file and loaded back, sharing files with the
// translation component's own save and load.
#include "vexilitems.h"
#include "vxcategoryfile.h"
#include "vxcomp.h"
#include "vxerrors.h"
#include "vxgridmodel.h"

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
        tree = new QTreeWidget(this);
        tree->setObjectName(QStringLiteral("tree"));
        new QTreeWidgetItem(tree, {QStringLiteral("Root")});
        vx = new TVexilItems(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->SetLangNames({QStringLiteral("English"), QStringLiteral("German")});
        vx->BuildList();
    }
    TvxCategoryFile::Target target(TStringsType kind, const QString &category) const
    {
        return {vx->ownerName(), vx->filePrefix(), kind, category};
    }
    QPushButton *button;
    QTreeWidget *tree;
    TVexilItems *vx;
};

namespace {

const QString noInformation = QStringLiteral("There are no information for this property in selected file!");

QString readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
}

QByteArray readBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

void writeAll(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

// A grid of @p languages language columns holding @p lines (tab-delimited).
void fill(TvxGridModel &grid, const QStringList &lines, int languages = 2)
{
    grid.build(lines, QLatin1Char('\t'), languages);
    for (int c = 1; c <= languages; ++c)
        grid.setHeader(c, QStringLiteral("L%1").arg(c));
}

} // namespace

class TstCategoryFile : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        QVERIFY(m_dir.isValid());
        m_file = m_dir.filePath(QStringLiteral("app.lng"));
        QFile::remove(m_file);
    }
    void sections();
    void saveWritesOneLinePerRow();
    void bracketedKeys();
    void otherFormsAndOlderKeys();
    void overwriteQuestions();
    void noEntryLeavesGridAsItWas();
    void roundTripWithComponent();
    void refusedSavesLeaveFile();
    void damagedAndForeignFiles();

private:
    QTemporaryDir m_dir;
    QString m_file;
};

void TstCategoryFile::sections()
{
    QCOMPARE(TvxCategoryFile::section(stMultiLines, QStringLiteral("MultiLines")), QStringLiteral("MultiLines"));
    QCOMPARE(TvxCategoryFile::section(stStrings, QStringLiteral("Strings")), QStringLiteral("STRINGS"));
    QCOMPARE(TvxCategoryFile::section(stDlgsCaptions, QString()), QStringLiteral("Dialogs"));
    QCOMPARE(TvxCategoryFile::section(stCollections, QStringLiteral("Collections")), QStringLiteral("Collections"));
    QCOMPARE(TvxCategoryFile::section(stCollections, QStringLiteral("Columns")),
             QStringLiteral("ListView_TreeView_Items"));
    QCOMPARE(TvxCategoryFile::section(stListView_TreeView_Items, QString()),
             QStringLiteral("ListView_TreeView_Items"));
}

void TstCategoryFile::saveWritesOneLinePerRow()
{
    TForm1 form;
    TvxGridModel grid;
    fill(grid,
         {QStringLiteral("TForm1\tFirst\tErste\t"), QStringLiteral("Button1\ttwo\r\nlines\tzwei|Zeilen\t"),
          QStringLiteral("Empty\t\t\t"), QString()},
         3);
    grid.setHeader(3, QString());
    writeAll(m_file, "[Language names - for intenal use only!]\nLanguage_1=old\n\n[OPTIONS]\nDELIMITER=^\nOther=1\n");
    TvxCategoryFile::save(grid, form.target(stCaptions, QStringLiteral("Captions")), m_file, QLatin1Char('|'));

    const QString text = readAll(m_file);
    const QString esc(QChar(28));
    QVERIFY2(text.contains(QStringLiteral("[OPTIONS]\nDELIMITER=|\n\n")), qPrintable(text));
    QVERIFY(!text.contains(QStringLiteral("intenal")));
    QVERIFY(text.contains(QStringLiteral("Language_1=L1\nLanguage_2=L2\nLanguage_3=Language 3\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.TForm1=First|Erste||\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.Button1=two") + QChar(25) + QChar(26) + QStringLiteral("lines|zwei")
                          + esc + QStringLiteral("Zeilen||\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.Empty=|||\n")));
    QCOMPARE(text.count(QStringLiteral("TForm1.")), 3); // the blank row is not written

    TvxGridModel back;
    fill(back, {}, 3);
    QChar delim = QLatin1Char('^');
    TvxCategoryFile::load(back, form.target(stCaptions, QStringLiteral("Captions")), m_file, delim, nullptr);
    QCOMPARE(delim, QLatin1Char('|'));
    QCOMPARE(back.lines(QLatin1Char('\t')), grid.lines(QLatin1Char('\t')));
    QCOMPARE(back.cell(1, 1), QStringLiteral("two\r\nlines"));
    QCOMPARE(back.languageHeaders(), (QStringList{QStringLiteral("L1"), QStringLiteral("L2"),
                                                  QStringLiteral("Language 3")}));
}

void TstCategoryFile::bracketedKeys()
{
    TForm1 form;
    TvxGridModel grid;
    fill(grid, {QStringLiteral("ListView1.Items[0].Caption\tOne\tEins\t")});
    TvxCategoryFile::save(grid, form.target(stListView_TreeView_Items, QString()), m_file, QLatin1Char('|'));
    TvxCategoryFile::save(grid, form.target(stCollections, QStringLiteral("Collections")), m_file,
                          QLatin1Char('|'));
    const QString text = readAll(m_file);
    QVERIFY(text.contains(QStringLiteral("[ListView_TreeView_Items]\nTForm1.ListView1.Items-0+.Caption=One|Eins|\n")));
    QVERIFY(text.contains(QStringLiteral("[Collections]\nTForm1.ListView1.Items-0+.Caption=One|Eins|\n")));

    TvxGridModel back;
    fill(back, {});
    QChar delim = QLatin1Char('|');
    TvxCategoryFile::load(back, form.target(stCollections, QStringLiteral("Columns")), m_file, delim, nullptr);
    QCOMPARE(back.key(0), QStringLiteral("ListView1.Items[0].Caption"));

    // "-" or "+" in such a key would come back as a bracket.
    fill(grid, {QStringLiteral("a-b.Caption\tx\ty\t")});
    QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::save(grid, form.target(stCollections,
                                                                                  QStringLiteral("Collections")),
                                                                m_file, QLatin1Char('|')));
    QCOMPARE(readAll(m_file), text);
}

void TstCategoryFile::otherFormsAndOlderKeys()
{
    TForm1 form;
    writeAll(m_file, "[Captions]\nForm1.Button1=old|alt|\nTForm2.Button1=Cancel|Abbrechen|\nForm1.Gone=g|g|\n\n"
                     "[Hints]\nForm1.Button1=tip|Tipp|\nTForm1.Button1=tip|Tipp|\n\n"
                     "[Strings]\nTForm1.IDS=s|s|\nForm1.Last=kept|kept|");
    TvxGridModel grid;
    fill(grid, {QStringLiteral("Button1\tOK\tGut\t")});
    TvxCategoryFile::save(grid, form.target(stCaptions, QStringLiteral("Captions")), m_file, QLatin1Char('|'));
    QString text = readAll(m_file);
    QVERIFY2(text.startsWith(QStringLiteral("[Captions]\nTForm2.Button1=Cancel|Abbrechen|\nTForm1.Button1=OK|Gut|\n\n")),
             qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("[Hints]\nForm1.Button1=tip|Tipp|\nTForm1.Button1=tip|Tipp|\n")));
    QVERIFY(text.contains(QStringLiteral("TForm1.IDS=s|s|")));

    // Every section is cleaned the same way, whichever name it is saved under.
    TvxCategoryFile::save(grid, form.target(stStrings, QStringLiteral("Strings")), m_file, QLatin1Char('|'));
    text = readAll(m_file);
    QVERIFY2(text.contains(QStringLiteral("[Strings]\nTForm1.IDS=s|s|\nTForm1.Button1=OK|Gut|\n\n")), qPrintable(text));
    QVERIFY(!text.contains(QStringLiteral("Form1.Last")));

    // When the object name is the prefix itself, the keys just written stay.
    const TvxCategoryFile::Target same{QStringLiteral("TForm1"), QStringLiteral("TForm1"), stHints, QStringLiteral("Hints")};
    TvxCategoryFile::save(grid, same, m_file, QLatin1Char('|'));
    QVERIFY(readAll(m_file).contains(
        QStringLiteral("[Hints]\nForm1.Button1=tip|Tipp|\nTForm1.Button1=OK|Gut|\n\n")));
}

void TstCategoryFile::overwriteQuestions()
{
    // Button1 comes twice: once under the object name, once under the prefix.
    writeAll(m_file, "[Captions]\nForm1.Button1=Old|Alt|\nTForm1.Label1=L|L|\nTForm1.=bare|\n"
                     "TForm1.Button1=New|Neu|\nTForm1.Edit1=E|E|\nTForm9.Button1=x|x|\n");
    TForm1 form;
    const auto target = form.target(stCaptions, QStringLiteral("Captions"));
    QChar delim = QLatin1Char('|');
    QStringList asked;
    auto answer = [&asked](TvxCategoryFile::Answer a) {
        return [&asked, a](const QString &key) {
            asked << key;
            return a;
        };
    };

    TvxGridModel grid;
    fill(grid, {QStringLiteral("Stale\ts\ts\t")});
    TvxCategoryFile::load(grid, target, m_file, delim, answer(TvxCategoryFile::Cancel));
    QCOMPARE(asked, QStringList{QStringLiteral("Button1")});
    // Rows handled before the question keep their texts; nothing after it.
    QCOMPARE(grid.lines(QLatin1Char('\t')),
             (QStringList{QStringLiteral("Button1\tOld\tAlt\t"), QStringLiteral("Label1\tL\tL\t")}));
    QCOMPARE(grid.cell(0, 1), QStringLiteral("bare")); // the bare-prefix entry goes first, keyless

    TvxCategoryFile::load(grid, target, m_file, delim, answer(TvxCategoryFile::No));
    QCOMPARE(grid.lines(QLatin1Char('\t')),
             (QStringList{QStringLiteral("Button1\tOld\tAlt\t"), QStringLiteral("Label1\tL\tL\t"),
                          QStringLiteral("Edit1\tE\tE\t")}));

    TvxCategoryFile::load(grid, target, m_file, delim, answer(TvxCategoryFile::Yes));
    QCOMPARE(grid.lines(QLatin1Char('\t')),
             (QStringList{QStringLiteral("Button1\tNew\tNeu\t"), QStringLiteral("Label1\tL\tL\t"),
                          QStringLiteral("Edit1\tE\tE\t")}));
    QCOMPARE(grid.rowCount(), 4);
    QCOMPARE(asked.size(), 3);
}

void TstCategoryFile::noEntryLeavesGridAsItWas()
{
    TForm1 form;
    TvxGridModel grid;
    fill(grid, {QStringLiteral("Button1\tOK\tGut\t"), QStringLiteral("Label1\ta\tb\t")});
    const QStringList before = grid.lines(QLatin1Char('\t'));
    auto expectNoInformation = [&](const QString &file) {
        QChar delim = QLatin1Char('^');
        try {
            TvxCategoryFile::load(grid, form.target(stCaptions, QStringLiteral("Captions")), file, delim, nullptr);
            QFAIL("load did not refuse");
        } catch (const EVexilError &e) {
            QCOMPARE(e.message(), noInformation);
        }
        QCOMPARE(delim, QLatin1Char('^'));
        QCOMPARE(grid.lines(QLatin1Char('\t')), before);
        QCOMPARE(grid.languageHeaders(), (QStringList{QStringLiteral("L1"), QStringLiteral("L2")}));
    };
    writeAll(m_file, "[OPTIONS]\nDELIMITER=|\n[Language names - for internal use only!]\nLanguage_1=X\n"
                     "[Hints]\nTForm1.Button1=h|h|\n");
    expectNoInformation(m_file); // no section
    writeAll(m_file, "[OPTIONS]\nDELIMITER=|\n[Captions]\nTForm2.Button1=x|y|\nTForm11.Button1=x|y|\n");
    expectNoInformation(m_file); // only other forms' entries
    expectNoInformation(m_dir.filePath(QStringLiteral("missing.lng")));
}

void TstCategoryFile::roundTripWithComponent()
{
    TForm1 form;
    TVexilItems *vx = form.vx;
    vx->ReplaceStringValue(vx->Captions(), QStringLiteral("Button1"), QStringLiteral("Gut|Prima"), 2);
    vx->AddString(QStringLiteral("IDS_MULTI"), {QStringLiteral("one\r\ntwo"), QStringLiteral("eins = 1")});
    vx->setItemLines({QStringLiteral("tree.Items[0].Caption\tRoot\tWurzel\t")});
    const QChar tab = vx->LangDelim();

    // Component to editor.
    struct Case { TStringsType kind; QString category; TvxStringList *table; };
    const Case cases[] = {{stCaptions, QStringLiteral("Captions"), vx->Captions()},
                          {stStrings, QStringLiteral("Strings"), vx->Strings()},
                          {stListView_TreeView_Items, QStringLiteral("ListView_TreeView_Items"), vx->Items()}};
    vx->SaveAllToFile(m_file, QLatin1Char('|'));
    for (const Case &c : cases) {
        TvxGridModel grid;
        fill(grid, {});
        QChar delim = QLatin1Char('^');
        TvxCategoryFile::load(grid, form.target(c.kind, c.category), m_file, delim, nullptr);
        QCOMPARE(grid.lines(tab), c.table->lines());
        QCOMPARE(grid.languageHeaders(), (QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")}));
    }

    // Editor to component: each grid edited, saved, and loaded by a fresh form.
    QFile::remove(m_file);
    for (const Case &c : cases) {
        TvxGridModel grid;
        grid.build(c.table->lines(), tab, 2);
        grid.setCell(0, 2, grid.cell(0, 2) + QStringLiteral(" (edited)\nnext|line"));
        TvxCategoryFile::save(grid, form.target(c.kind, c.category), m_file, QLatin1Char('|'));
        TForm1 reader;
        QVERIFY(reader.vx->LoadFromFile(c.kind, m_file, true) > 0);
        QCOMPARE(reader.vx->GetPropListByType(c.kind)->lines(), grid.lines(tab));
    }
}

void TstCategoryFile::refusedSavesLeaveFile()
{
    TForm1 form;
    const auto target = form.target(stStrings, QStringLiteral("Strings"));
    writeAll(m_file, "[STRINGS]\nTForm1.IDS=a|b|\n");
    const QByteArray original = readBytes(m_file);
    TvxGridModel grid;
    auto refused = [&](const QStringList &lines, QChar delim) {
        fill(grid, lines);
        QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::save(grid, target, m_file, delim));
        QCOMPARE(readBytes(m_file), original);
    };
    for (char16_t reserved : {u'\r', u'\n', char16_t(25), char16_t(26), char16_t(28)})
        refused({QStringLiteral("IDS\tx\ty\t")}, QChar(reserved));
    refused({QStringLiteral("A=B\tx\ty\t")}, QLatin1Char('|'));
    refused({QStringLiteral("IDS\tx") + QChar(26) + QStringLiteral("\ty\t")}, QLatin1Char('|'));
    // Keys that differ only in letter case are one key in the file.
    refused({QStringLiteral("IDS\tx\ty\t"), QStringLiteral("ids\tz\tz\t")}, QLatin1Char('|'));

    // A file that cannot be written throws and the grid's save changes nothing.
    const QString folder = m_dir.filePath(QStringLiteral("folder.lng"));
    QVERIFY(QDir().mkpath(folder));
    fill(grid, {QStringLiteral("IDS\tx\ty\t")});
    QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::save(grid, target, folder, QLatin1Char('|')));
    QVERIFY(QFileInfo(folder).isDir());
}

void TstCategoryFile::damagedAndForeignFiles()
{
    TForm1 form;
    const auto target = form.target(stCaptions, QStringLiteral("Captions"));
    TvxGridModel grid;
    fill(grid, {QStringLiteral("Button1\tOK\tGut\t")});
    const QStringList before = grid.lines(QLatin1Char('\t'));
    QChar delim = QLatin1Char('|');

    // Not UTF-8: read as the single-byte code page; saving keeps the rest.
    writeAll(m_file, "[Captions]\nTForm1.Button1=Gr\xf6\xdf" "e|Size|\nTForm2.Label=\x80uro|x|\n");
    TvxCategoryFile::load(grid, target, m_file, delim, nullptr);
    QCOMPARE(grid.cell(0, 1), QStringLiteral("Größe"));
    TvxCategoryFile::save(grid, target, m_file, QLatin1Char('|'));
    QVERIFY(readAll(m_file).contains(QStringLiteral("TForm2.Label=€uro|x|")));

    // A value without any delimiter is every language's text.
    writeAll(m_file, "[Captions]\nTForm1.Button1=alone\n");
    TvxCategoryFile::load(grid, target, m_file, delim, nullptr);
    QCOMPARE(grid.lines(QLatin1Char('\t')), QStringList{QStringLiteral("Button1\talone\talone\t")});

    // A text holding the grid's own delimiter cannot be shown: the load is
    // refused with the grid, headers and delimiter as they were.
    fill(grid, {QStringLiteral("Button1\tOK\tGut\t")});
    writeAll(m_file, "[OPTIONS]\nDELIMITER=;\n[Language names - for internal use only!]\nLanguage_1=EN\n"
                     "[Captions]\nTForm1.Label1=a;b;\nTForm1.Button1=tab\there;x;\n");
    QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::load(grid, target, m_file, delim, nullptr));
    QCOMPARE(grid.lines(QLatin1Char('\t')), before);
    QCOMPARE(grid.header(1), QStringLiteral("L1"));
    QCOMPARE(delim, QLatin1Char('|'));

    // A folder where the file should be: a clear error, the grid untouched.
    const QString folder = m_dir.filePath(QStringLiteral("folder2.lng"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::load(grid, target, folder, delim, nullptr));
    QCOMPARE(grid.lines(QLatin1Char('\t')), before);

    // Binary garbage holds no entry of the form.
    writeAll(m_file, QByteArray("\x00\xff\xfe[Captions\n=\n\x01\x02", 14));
    QVERIFY_THROWS_EXCEPTION(EVexilError, TvxCategoryFile::load(grid, target, m_file, delim, nullptr));
    QCOMPARE(grid.lines(QLatin1Char('\t')), before);
}

QTEST_MAIN(TstCategoryFile)
#include "tst_categoryfile.moc"
