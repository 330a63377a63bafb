// The expert's commands on a real project folder, without windows: units
// read and written safely, the .ui edits, the scan-and-replace run with its
// review and table answered by the test, the unused-identifier check and
// the component type change.
#include "vxscandriver.h"
#include "vxuiedit.h"
#include "vxunitfile.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest>

using namespace Vexil::Expert;

namespace {

const char *const kUi = R"(<?xml version="1.0" encoding="UTF-8"?>
<ui version="4.0">
 <class>Form1</class>
 <widget class="QWidget" name="Form1">
  <property name="windowTitle">
   <string>Grüße</string>
  </property>
  <widget class="TVexil" name="Vexil1">
   <property name="NumOfLanguages">
    <number>2</number>
   </property>
  </widget>
 </widget>
 <customwidgets>
  <customwidget>
   <class>TVexil</class>
   <extends>QWidget</extends>
   <header>vxcomp.h</header>
  </customwidget>
 </customwidgets>
 <resources/>
 <connections/>
</ui>
)";

const char *const kHeader = R"(#pragma once
#include <QtWidgets/QWidget>
#include "vxcomp.h"

namespace Ui { class Form1; }

class Form1 : public QWidget
{
    Q_OBJECT
public:
    explicit Form1(QWidget *parent = nullptr);
    TVexil *Vexil1 = nullptr;

private:
    Ui::Form1 *ui;
};
)";

const char *const kSource = R"(#include "form1.h"
#include "ui_form1.h"

static const char *SHello = "Hello";

Form1::Form1(QWidget *parent)
    : QWidget(parent), ui(new Ui::Form1)
{
    ui->setupUi(this);
    setWindowTitle(tr("Orders"));
    label->setText("Tab\there");
}
)";

QString readAll(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QStringLiteral("<unreadable>");
    return QString::fromUtf8(f.readAll());
}

void writeAll(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
}

struct Recorder
{
    QList<QPair<TvxMessageKind, QString>> messages;
    QStringList progress;
    TvxStringEntries added;
    int reviews = 0;
    bool accept = true;
    std::function<void(TvxFoundList &)> edit;

    TvxScanCallbacks callbacks()
    {
        TvxScanCallbacks cb;
        cb.review = [this](TvxFoundList &list) {
            ++reviews;
            if (edit)
                edit(list);
            return accept;
        };
        cb.addStrings = [this](const TvxStringEntries &e) {
            added += e;
            return true;
        };
        cb.message = [this](TvxMessageKind k, const QString &t) { messages.append({k, t}); };
        cb.progress = [this](const QString &t) { progress << t; };
        return cb;
    }
};

} // namespace

class tst_ExpertFiles : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void unitFileRefusesBinary();
    void unitFileRefusesChangedOrReadOnly();
    void unitFileKeepsByteOrderMark();

    void uiStringListSetAndRead();
    void uiStringListKeepsAttributesAndRest();
    void uiWidgetClassChange();

    void statementScanRewritesUnitAndAddsStrings();
    void scanCancelledOrNothingFoundChangesNothing();
    void unitChangedDuringReviewIsRefused();
    void readOnlyUnitIsRefused();
    void binaryAndHugeUnits();
    void constSectionMakesMethodsAndRewrites();
    void unusedIds();
    void typeChangeEditsFormAndDeclarations();

private:
    QString path(const char *name) const { return m_dir->filePath(QLatin1String(name)); }
    TvxScanInput input(bool constSection = false) const;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_ExpertFiles::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    writeAll(path("form1.ui"), kUi);
    writeAll(path("form1.h"), kHeader);
    writeAll(path("form1.cpp"), kSource);
}

TvxScanInput tst_ExpertFiles::input(bool constSection) const
{
    TvxScanInput in;
    in.formName = QStringLiteral("Form1");
    in.formClassName = QStringLiteral("Form1");
    in.componentName = QStringLiteral("Vexil1");
    in.strings = {QStringLiteral("OLD\told\t")};
    in.unitPath = path("form1.cpp");
    in.headerPath = path("form1.h");
    in.constSection = constSection;
    return in;
}

void tst_ExpertFiles::unitFileRefusesBinary()
{
    writeAll(path("nul.cpp"), QByteArray("int a;\0int b;", 13));
    writeAll(path("latin1.cpp"), "const char *s = \"caf\xe9\";\n");
    for (const char *name : {"nul.cpp", "latin1.cpp"}) {
        TvxUnitFile f(path(name));
        QVERIFY(!f.read());
        QVERIFY2(f.error().contains(QLatin1String("not a text file")), qPrintable(f.error()));
        QVERIFY(f.text().isEmpty());
        // Nothing read, nothing written.
        QVERIFY(!f.write(QStringLiteral("x")));
    }
    TvxUnitFile missing(path("missing.cpp"));
    QVERIFY(!missing.read());
    QVERIFY(missing.error().startsWith(QLatin1String("Cannot read")));
}

void tst_ExpertFiles::unitFileRefusesChangedOrReadOnly()
{
    TvxUnitFile f(path("form1.cpp"));
    QVERIFY(f.read());
    QVERIFY(f.unchangedOnDisk());
    // Same size, other content: the content decides.
    QByteArray other = QByteArray(kSource);
    other[other.indexOf("Orders")] = 'X';
    writeAll(path("form1.cpp"), other);
    QVERIFY(!f.unchangedOnDisk());
    QVERIFY(!f.write(QStringLiteral("rewritten")));
    QVERIFY2(f.error().contains(QLatin1String("changed on disk")), qPrintable(f.error()));
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(other));

    QVERIFY(f.read());
    QFile::setPermissions(path("form1.cpp"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    QVERIFY(!f.write(QStringLiteral("rewritten")));
    QVERIFY2(f.error().contains(QLatin1String("read-only")), qPrintable(f.error()));
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(other));
    QFile::setPermissions(path("form1.cpp"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QVERIFY(f.write(QStringLiteral("rewritten")));
    QCOMPARE(readAll(path("form1.cpp")), QStringLiteral("rewritten"));
    // Written counts as read: a second write goes through.
    QVERIFY(f.write(QStringLiteral("again")));
}

void tst_ExpertFiles::unitFileKeepsByteOrderMark()
{
    writeAll(path("bom.cpp"), "\xEF\xBB\xBFint a;\r\n");
    TvxUnitFile f(path("bom.cpp"));
    QVERIFY(f.read());
    QCOMPARE(f.text(), QStringLiteral("int a;\r\n"));
    QVERIFY(f.write(QStringLiteral("int b;\r\n")));
    QFile raw(path("bom.cpp"));
    QVERIFY(raw.open(QIODevice::ReadOnly));
    QCOMPARE(raw.readAll(), QByteArray("\xEF\xBB\xBFint b;\r\n"));
}

void tst_ExpertFiles::uiStringListSetAndRead()
{
    QString ui = QString::fromUtf8(kUi);
    bool found = true;
    QVERIFY(uiStringList(ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"), &found).isEmpty());
    QVERIFY(!found);
    const QStringList lines{QStringLiteral("IDS_1\tA & <b>\t"), QStringLiteral("IDS_2\tline\r\nnext\t"),
                            QStringLiteral("IDS_3\tÜmlaut\t")};
    QVERIFY(setUiStringList(&ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"), lines));
    QCOMPARE(uiStringList(ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"), &found), lines);
    QVERIFY(found);
    // Designer's layout, under the component's start tag.
    QVERIFY2(ui.contains(QLatin1String("  <widget class=\"TVexil\" name=\"Vexil1\">\n"
                                       "   <property name=\"Strings\">\n"
                                       "    <stringlist>\n"
                                       "     <string>IDS_1\tA &amp; &lt;b&gt;\t</string>\n")),
             qPrintable(ui));
    // Set again: replaced, not added.
    QVERIFY(setUiStringList(&ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"), lines.mid(0, 1)));
    QCOMPARE(uiStringList(ui, QStringLiteral("Vexil1"), QStringLiteral("Strings")), lines.mid(0, 1));
    QCOMPARE(ui.count(QLatin1String("name=\"Strings\"")), 1);

    QString error;
    QString broken = ui;
    QVERIFY(!setUiStringList(&broken, QStringLiteral("NoSuch"), QStringLiteral("Strings"), lines, &error));
    QCOMPARE(broken, ui);
    QVERIFY(error.contains(QLatin1String("NoSuch")));
    broken = ui.left(ui.size() / 2);
    const QString half = broken;
    QVERIFY(!setUiStringList(&broken, QStringLiteral("Vexil1"), QStringLiteral("Strings"), lines, &error));
    QCOMPARE(broken, half);
    QVERIFY(error.contains(QLatin1String("not valid XML")));
}

void tst_ExpertFiles::uiStringListKeepsAttributesAndRest()
{
    // A list marked not to be translated keeps the mark; the rest of the
    // file is the same, character for character.
    const QString before = QString::fromUtf8(kUi).replace(
        QStringLiteral("   <property name=\"NumOfLanguages\">"),
        QStringLiteral("   <property name=\"Strings\">\n    <stringlist notr=\"true\">\n     <string>A\t</string>\n"
                       "    </stringlist>\n   </property>\n   <property name=\"NumOfLanguages\">"));
    QString ui = before;
    QVERIFY(setUiStringList(&ui, QStringLiteral("Vexil1"), QStringLiteral("Strings"), {QStringLiteral("B\t")}));
    QCOMPARE(ui, QString(before).replace(QStringLiteral("<string>A\t"), QStringLiteral("<string>B\t")));
}

void tst_ExpertFiles::uiWidgetClassChange()
{
    QString ui = QString::fromUtf8(kUi);
    QCOMPARE(uiWidgetClass(ui, QStringLiteral("Vexil1")), QStringLiteral("TVexil"));
    QVERIFY(setUiWidgetClass(&ui, QStringLiteral("Vexil1"), QStringLiteral("TVexilRT"), QStringLiteral("vxvexilrt.h")));
    QCOMPARE(uiWidgetClass(ui, QStringLiteral("Vexil1")), QStringLiteral("TVexilRT"));
    QVERIFY(ui.contains(QLatin1String("<class>TVexilRT</class>")));
    QVERIFY(ui.contains(QLatin1String("<header>vxvexilrt.h</header>")));
    QVERIFY(!ui.contains(QLatin1String("TVexil<")) && !ui.contains(QLatin1String("vxcomp.h")));
    QCOMPARE(ui.size(), QString::fromUtf8(kUi).size() + 4 + 4 - 1);

    // A form that already lists the new class loses the old entry only.
    ui = QString::fromUtf8(kUi).replace(QStringLiteral(" </customwidgets>"),
                                        QStringLiteral("  <customwidget>\n   <class>TVexilTLV</class>\n"
                                                       "   <extends>QWidget</extends>\n   <header>vxvexiltlv.h</header>\n"
                                                       "  </customwidget>\n </customwidgets>"));
    QVERIFY(setUiWidgetClass(&ui, QStringLiteral("Vexil1"), QStringLiteral("TVexilTLV"), QStringLiteral("vxvexiltlv.h")));
    QCOMPARE(ui.count(QLatin1String("<customwidget>")), 1);
    QVERIFY(!ui.contains(QLatin1String("<class>TVexil</class>")));

    QCOMPARE(changeDeclarationClass(QStringLiteral("#include \"vxcomp.h\"\n    TVexil *Vexil1 = nullptr;\n    TVexil *Other;\n"),
                                    QStringLiteral("Vexil1"), QStringLiteral("TVexil"), QStringLiteral("TVexilRT"),
                                    QStringLiteral("vxcomp.h"), QStringLiteral("vxvexilrt.h")),
             QStringLiteral("#include \"vxcomp.h\"\n#include \"vxvexilrt.h\"\n    TVexilRT *Vexil1 = nullptr;\n"
                            "    TVexil *Other;\n"));
}

void tst_ExpertFiles::statementScanRewritesUnitAndAddsStrings()
{
    Recorder rec;
    rec.edit = [](TvxFoundList &list) {
        // The constant before the first body is not a statement.
        QCOMPARE(list.rowCount(), 2);
    };
    QCOMPARE(doScanReplace(input(), rec.callbacks()), TvxScanOutcome::Done);
    QCOMPARE(rec.reviews, 1);
    const QString unit = readAll(path("form1.cpp"));
    QVERIFY2(unit.contains(QLatin1String("tr(ui->Vexil1->GetText(\"IDS_1\" /* \"Orders\" */ ))")), qPrintable(unit));
    QVERIFY(unit.contains(QLatin1String("ui->Vexil1->GetText(\"IDS_2\" /* \"Tab\\there\" */ )")));
    QVERIFY(unit.contains(QLatin1String("static const char *SHello = \"Hello\";")));
    // The decoded tab goes to the table escaped, so the line keeps its fields.
    QCOMPARE(rec.added, (TvxStringEntries{{QStringLiteral("IDS_1"), QStringLiteral("Orders")},
                                          {QStringLiteral("IDS_2"), QStringLiteral("Tab\\there")}}));
    QCOMPARE(rec.progress.first(), Msg::scanning());
    QVERIFY(rec.progress.contains(Msg::modifying()));
    QCOMPARE(rec.progress.last(), QString());
    QCOMPARE(rec.messages.size(), 1);
    QCOMPARE(rec.messages.first().second, Msg::translated());
}

void tst_ExpertFiles::scanCancelledOrNothingFoundChangesNothing()
{
    Recorder rec;
    rec.accept = false;
    QCOMPARE(doScanReplace(input(), rec.callbacks()), TvxScanOutcome::Cancelled);
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(kSource));
    QVERIFY(rec.added.isEmpty());
    QVERIFY(rec.messages.isEmpty());

    writeAll(path("plain.cpp"), "int f()\n{\n    return 1;\n}\n");
    TvxScanInput in = input();
    in.unitPath = path("plain.cpp");
    Recorder none;
    QCOMPARE(doScanReplace(in, none.callbacks()), TvxScanOutcome::NothingFound);
    QCOMPARE(none.reviews, 0);
    QCOMPARE(none.messages.value(0).second, Msg::noStrings());
    QCOMPARE(none.progress.last(), QString()); // hidden before the message

    writeAll(path("empty.cpp"), "");
    in.unitPath = path("empty.cpp");
    Recorder quiet;
    QCOMPARE(doScanReplace(in, quiet.callbacks()), TvxScanOutcome::Empty);
    QVERIFY(quiet.messages.isEmpty());
}

void tst_ExpertFiles::unitChangedDuringReviewIsRefused()
{
    Recorder rec;
    const QByteArray edited = QByteArray(kSource) + "// edited meanwhile\n";
    rec.edit = [&](TvxFoundList &) { writeAll(path("form1.cpp"), edited); };
    QCOMPARE(doScanReplace(input(), rec.callbacks()), TvxScanOutcome::Failed);
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(edited));
    QVERIFY(rec.added.isEmpty());
    QCOMPARE(rec.messages.size(), 1);
    QCOMPARE(rec.messages.first().first, TvxMessageKind::Error);
    QVERIFY(rec.messages.first().second.contains(QLatin1String("changed on disk")));
}

void tst_ExpertFiles::readOnlyUnitIsRefused()
{
    QFile::setPermissions(path("form1.cpp"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    Recorder rec;
    QCOMPARE(doScanReplace(input(), rec.callbacks()), TvxScanOutcome::Failed);
    QFile::setPermissions(path("form1.cpp"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(kSource));
    QVERIFY(rec.added.isEmpty());
    QVERIFY(rec.messages.value(0).second.contains(QLatin1String("read-only")));
}

void tst_ExpertFiles::binaryAndHugeUnits()
{
    writeAll(path("bin.cpp"), QByteArray("\x7f" "ELF\0\0\0", 7));
    TvxScanInput in = input();
    in.unitPath = path("bin.cpp");
    Recorder rec;
    QCOMPARE(doScanReplace(in, rec.callbacks()), TvxScanOutcome::Failed);
    QCOMPARE(rec.reviews, 0);
    QVERIFY(rec.messages.value(0).second.contains(QLatin1String("not a text file")));

    // One line of 4 MB with an unterminated literal at its end, and many
    // literals before it: found, the open one left alone.
    QByteArray huge = "void f()\n{\n";
    for (int i = 0; i < 100000; ++i)
        huge += "g(\"s" + QByteArray::number(i % 7) + "\"); ";
    huge += QByteArray(3000000, 'x') + " \"open\n}\n";
    writeAll(path("huge.cpp"), huge);
    in.unitPath = path("huge.cpp");
    Recorder big;
    big.edit = [](TvxFoundList &list) { QCOMPARE(list.rowCount(), 100000); };
    QCOMPARE(doScanReplace(in, big.callbacks()), TvxScanOutcome::Done);
    QCOMPARE(big.added.size(), 7); // equal texts share an identifier
    const QString out = readAll(path("huge.cpp"));
    QVERIFY(out.endsWith(QLatin1String(" \"open\n}\n")));
    QCOMPARE(out.count(QLatin1String("GetText(")), 100000);
}

void tst_ExpertFiles::constSectionMakesMethodsAndRewrites()
{
    Recorder rec;
    QCOMPARE(doScanReplace(input(true), rec.callbacks()), TvxScanOutcome::Done);
    const QString header = readAll(path("form1.h"));
    QVERIFY2(header.contains(QLatin1String("void on_Vexil1_languageChanged();")), qPrintable(header));
    QVERIFY(header.contains(QLatin1String("void UpdateStrings();")));
    const QString unit = readAll(path("form1.cpp"));
    QVERIFY2(unit.contains(QLatin1String("static QString SHello;")), qPrintable(unit));
    QVERIFY(unit.contains(QLatin1String("    SHello = ui->Vexil1->GetText(\"strSHELLO\");")));
    QCOMPARE(unit.count(QLatin1String("UpdateStrings();")), 2); // constructor and language slot
    QCOMPARE(rec.added, (TvxStringEntries{{QStringLiteral("strSHELLO"), QStringLiteral("Hello")}}));

    // A second run finds no constant, yet the methods stay single.
    Recorder again;
    QCOMPARE(doScanReplace(input(true), again.callbacks()), TvxScanOutcome::NothingFound);
    QCOMPARE(again.messages.value(0).second, Msg::noConstStrings());
    QCOMPARE(readAll(path("form1.h")).count(QLatin1String("void UpdateStrings();")), 1);

    // A read-only header stops the run before the unit is touched.
    init();
    QFile::setPermissions(path("form1.h"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    Recorder refused;
    QCOMPARE(doScanReplace(input(true), refused.callbacks()), TvxScanOutcome::Failed);
    QFile::setPermissions(path("form1.h"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QCOMPARE(refused.reviews, 0);
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(kSource));
    QCOMPARE(readAll(path("form1.h")), QString::fromUtf8(kHeader));

    // A form without a header says which file is missing; nothing is written.
    TvxScanInput noHeader = input(true);
    noHeader.headerPath.clear();
    Recorder missing;
    QCOMPARE(doScanReplace(noHeader, missing.callbacks()), TvxScanOutcome::Failed);
    QVERIFY2(missing.messages.value(0).second.contains(QLatin1String("Form1 has no .h")),
             qPrintable(missing.messages.value(0).second));
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(kSource));
}

void tst_ExpertFiles::unusedIds()
{
    writeAll(path("form1.cpp"), "void f()\n{\n    a(ui->Vexil1->GetText(\"IDS_1\"));\n"
                                "    b(ui->Vexil1->GetText(\"IDS_2\" /* \"x\" */ ));\n}\n");
    QStringList unused;
    QString error;
    QVERIFY(checkUnusedIds(path("form1.cpp"), {QStringLiteral("IDS_1\ta\t"), QStringLiteral("IDS_2\tb\t")},
                           QLatin1Char('\t'), &unused, &error));
    QCOMPARE(unused, QStringList{QStringLiteral("IDS_2")});
    QVERIFY(!checkUnusedIds(path("missing.cpp"), {}, QLatin1Char('\t'), &unused, &error));
    QVERIFY(error.startsWith(QLatin1String("Cannot read")));
}

void tst_ExpertFiles::typeChangeEditsFormAndDeclarations()
{
    QString error;
    QVERIFY2(changeComponentType(path("form1.ui"), {path("form1.h"), path("form1.cpp")}, QStringLiteral("Vexil1"),
                                 QStringLiteral("TVexilLinked"), &error),
             qPrintable(error));
    const QString ui = readAll(path("form1.ui"));
    QCOMPARE(uiWidgetClass(ui, QStringLiteral("Vexil1")), QStringLiteral("TVexilLinked"));
    QVERIFY(ui.contains(QLatin1String("<header>vxvexillinked.h</header>")));
    QVERIFY(ui.contains(QStringLiteral("Grüße")));
    const QString header = readAll(path("form1.h"));
    QVERIFY(header.contains(QLatin1String("TVexilLinked *Vexil1 = nullptr;")));
    QVERIFY(header.contains(QLatin1String("#include \"vxvexillinked.h\"")));
    QCOMPARE(readAll(path("form1.cpp")), QString::fromUtf8(kSource));

    // A read-only header: nothing is written, the form file included.
    QFile::setPermissions(path("form1.h"), QFileDevice::ReadOwner | QFileDevice::ReadUser);
    QVERIFY(!changeComponentType(path("form1.ui"), {path("form1.h")}, QStringLiteral("Vexil1"),
                                 QStringLiteral("TVexilTLV"), &error));
    QFile::setPermissions(path("form1.h"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    QVERIFY(error.contains(QLatin1String("read-only")));
    QCOMPARE(readAll(path("form1.ui")), ui);

    QVERIFY(!changeComponentType(path("form1.ui"), {}, QStringLiteral("NoSuch"), QStringLiteral("TVexil"), &error));
    QVERIFY(!changeComponentType(path("form1.ui"), {}, QStringLiteral("Vexil1"), QStringLiteral("QWidget"), &error));

    // The table round trip through the file.
    QVERIFY(writeUiStrings(path("form1.ui"), QStringLiteral("Vexil1"), {QStringLiteral("IDS_0\tx\t")}, &error));
    QStringList strings;
    QVERIFY(readUiStrings(path("form1.ui"), QStringLiteral("Vexil1"), &strings, &error));
    QCOMPARE(strings, QStringList{QStringLiteral("IDS_0\tx\t")});
}

QTEST_GUILESS_MAIN(tst_ExpertFiles)
#include "tst_expertfiles.moc"
