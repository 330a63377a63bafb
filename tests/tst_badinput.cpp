// Hostile translation files fed to every load and merge entry point: each
// gives its documented result, nothing crashes or hangs, and the other
// entries of the file and of the tables survive.
#include "memini.h"
#include "vexilitems.h"
#include "vxcomp.h"

#include <QtTest>
#include <QtWidgets/QPushButton>

class TForm9 : public QWidget
{
    Q_OBJECT
public:
    TForm9()
    {
        button = new QPushButton(QStringLiteral("OK"), this);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
        vx->AddString(QStringLiteral("Kept"), {QStringLiteral("k"), QStringLiteral("K")});
    }
    QPushButton *button;
    TVexil *vx;
};

// The same form with a component that also publishes the twelfth table.
class TForm9Items : public QWidget
{
    Q_OBJECT
public:
    TForm9Items()
    {
        setObjectName(QStringLiteral("TForm9"));
        button = new QPushButton(QStringLiteral("OK"), this);
        button->setObjectName(QStringLiteral("Button1"));
        vx = new TVexilItems(this);
        vx->Loaded();
        vx->SetNumLang(2);
        vx->BuildList();
        vx->AddString(QStringLiteral("Kept"), {QStringLiteral("k"), QStringLiteral("K")});
    }
    QPushButton *button;
    TVexilItems *vx;
};

namespace {

QByteArray pseudoRandom(int size, quint32 seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i) {
        seed = seed * 1664525u + 1013904223u;
        bytes[i] = char(seed >> 24);
    }
    return bytes;
}

const QByteArray goodFile = "[OPTIONS]\nDELIMITER=|\n[Strings]\nTForm9.Hello=Hello|Hallo|\nOther.Hello=x|y|\n"
                            "[Captions]\nTForm9.Button1=OK|Gut|\n";

} // namespace

class TstBadInput : public QObject
{
    Q_OBJECT
private slots:
    void hostileFiles_data();
    void hostileFiles();
    void savingIntoDamagedFileKeepsOthers();
};

void TstBadInput::hostileFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("truncated header") << QByteArray("[Strin");
    QTest::newRow("truncated entry") << goodFile.left(goodFile.indexOf("Hallo"));
    QTest::newRow("binary") << pseudoRandom(64 * 1024, 7);
    QTest::newRow("binary after a header") << QByteArray("[Strings]\n") + pseudoRandom(4096, 11);
    QTest::newRow("NUL bytes") << QByteArray("[Strings]\nTForm9.A=a\0b|c|\n", 26);
    QTest::newRow("empty delimiter") << QByteArray("[OPTIONS]\nDELIMITER=\n[Strings]\nTForm9.A=a|b|\n");
    QTest::newRow("tab delimiter") << QByteArray("[OPTIONS]\nDELIMITER=\t\n[Strings]\nTForm9.A=a\tb\t\n");
    QTest::newRow("only delimiters") << QByteArray("[Strings]\nTForm9.A=||||||||||||||||||||\nTForm9.=|\n=|\n");
    QTest::newRow("huge line") << QByteArray("[Strings]\nTForm9.Big=") + QByteArray(8 << 20, 'x') + "|\n";
    QTest::newRow("many sections") << QByteArray("[S]\n").repeated(50000);
    QTest::newRow("duplicate keys") << QByteArray("[Strings]\nTForm9.A=1|\ntform9.a=2|\nTFORM9.A=3|\n");
    QTest::newRow("brackets everywhere") << QByteArray("[Collections]\nTForm9.-+-+[]=a|\n[]\n[[x]]\n");
    QTest::newRow("invalid UTF-8") << QByteArray("[Strings]\nTForm9.A=\xC3\x28\xFF\xFE|\xE2\x82|\n");
    QTest::newRow("CR only") << QByteArray("[Strings]\rTForm9.A=a|b|\r");
    QTest::newRow("escaped delimiters") << QByteArray("[Strings]\nTForm9.A=\x1c|\x1c\x1c|\x1c\nTForm9.B=\x1c\n"
                                                      "[OPTIONS]\nDELIMITER=\x1c\n");
    QTest::newRow("list and tree items") << QByteArray("[ListView_TreeView_Items]\nTForm9.gone.Items-0+.Caption=a|b|\n"
                                                       "TForm9.Button1.Items-+-+=x\nTForm9.=|\nTForm9.-=+\n"
                                                       "tform9.GONE.items-0+.caption=c|\n");
}

void TstBadInput::hostileFiles()
{
    QFETCH(QByteArray, bytes);
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("bad.lng"));
    {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(bytes);
    }
    TMemIniFile ini(file); // the store itself reads anything
    QStringList sections;
    ini.ReadSections(sections);

    for (int entry = 0; entry < 7; ++entry) {
        TForm9 form;
        TVexil *vx = form.vx;
        switch (entry) {
        case 0:
            QVERIFY(vx->LoadFromFile(stStrings, file, false) >= 0);
            break;
        case 1:
            QVERIFY(vx->LoadStringsFromFile(file, false) >= 0);
            break;
        case 2:
            vx->LoadAllFromFile(file, false);
            QVERIFY(!vx->BulkLoading());
            break;
        case 3:
            vx->LoadAllFromFileDNC(file, false);
            break;
        case 4:
            QVERIFY(vx->MergeFromFile(stStrings, file));
            break;
        case 5:
            QVERIFY(!vx->MergeAllFromFile(file)); // the twelfth table is not published
            QVERIFY(vx->BulkLoading());
            break;
        case 6:
            QVERIFY(!vx->MergeAllFromFileDNC(file));
            break;
        }
        // What the table had stays reachable, and the form still switches.
        QCOMPARE(vx->GetText(QStringLiteral("Kept")), QStringLiteral("k"));
        vx->SetActLang(2);
        vx->SetActLang(1);
        QCOMPARE(form.button->text(), QStringLiteral("OK"));
    }

    // A component with all twelve tables: every merge of all of them
    // succeeds, whatever the file holds.
    for (int entry = 0; entry < 3; ++entry) {
        TForm9Items form;
        TVexilItems *vx = form.vx;
        switch (entry) {
        case 0:
            vx->LoadAllFromFile(file, true);
            QVERIFY(vx->LoadFromFile(stListView_TreeView_Items, file, false) >= 0);
            break;
        case 1:
            QVERIFY(vx->MergeAllFromFile(file));
            break;
        case 2:
            QVERIFY(vx->MergeAllFromFileDNC(file));
            QVERIFY(vx->MergeFromFile(stListView_TreeView_Items, file));
            break;
        }
        QVERIFY(!vx->BulkLoading());
        if (entry)
            QCOMPARE(vx->GetText(QStringLiteral("Kept")), QStringLiteral("k"));
        vx->SetActLang(2);
        vx->SetActLang(1);
        QCOMPARE(form.button->text(), QStringLiteral("OK"));
    }
}

void TstBadInput::savingIntoDamagedFileKeepsOthers()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("mixed.lng"));
    {
        QFile f(file);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write("garbage before any header\n" + goodFile + "[Strings]\nTForm9.Dup=second section|\n"
                "[Zzz]\n\x01\x02\x03=\xFF\n");
    }
    TForm9 form;
    form.vx->SaveAllToFile(file, QLatin1Char('|'));
    TMemIniFile ini(file);
    QCOMPARE(ini.ReadString(QStringLiteral("Strings"), QStringLiteral("Other.Hello"), QString()),
             QStringLiteral("x|y|"));
    QCOMPARE(ini.ReadString(QStringLiteral("Strings"), QStringLiteral("TForm9.Kept"), QString()),
             QStringLiteral("k|K|"));
    QVERIFY(ini.SectionExists(QStringLiteral("Zzz")));
    QStringList sections;
    ini.ReadSections(sections);
    QCOMPARE(sections.count(QStringLiteral("Strings")), 2); // the second section of that name is kept
}

QTEST_MAIN(TstBadInput)
#include "tst_badinput.moc"
