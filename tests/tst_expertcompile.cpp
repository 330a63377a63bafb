// Rewritten units must still compile. Real C++ sources from Debian's Qt
// example package are rewritten in statement mode (as units without a form
// of their own, so every call looks the form up at run time) after a review
// that drops what a developer drops and casts what needs a char pointer;
// the compiler then checks them against the installed Qt 6 headers and the
// suite's own. Generated calls are also checked with QT_NO_CAST_FROM_ASCII.
#include "vxsourcescan.h"

#include <QtTest>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

using namespace Vexil::Expert;

namespace {

QString examplesDir()
{
    const QStringList candidates = QDir(QStringLiteral("/usr/lib")).entryList({QStringLiteral("*-linux-*")}, QDir::Dirs);
    for (const QString &arch : candidates) {
        const QString dir = QStringLiteral("/usr/lib/%1/qt5/examples").arg(arch);
        if (QFileInfo::exists(dir))
            return dir;
    }
    return QStringLiteral("/usr/share/qt5/examples");
}

// Starts a syntax-only compile of @p file with the suite's flags.
void startCompile(QProcess &cc, const QString &file, const QStringList &extra)
{
    QStringList args{QLatin1Char('@') + QStringLiteral(VEXIL_COMPILE_ARGS), QStringLiteral("-fsyntax-only")};
    args += extra;
    args << file;
    cc.start(QStringLiteral(VEXIL_CXX), args);
}

// Waits for a compile; the compiler's messages go to @p errors.
bool finished(QProcess &cc, QString *errors)
{
    if (!cc.waitForFinished(120000)) {
        *errors = QStringLiteral("compiler did not finish");
        return false;
    }
    *errors = QString::fromLocal8Bit(cc.readAllStandardError());
    return cc.exitStatus() == QProcess::NormalExit && cc.exitCode() == 0;
}

bool compiles(const QString &file, const QStringList &extra, QString *errors)
{
    QProcess cc;
    startCompile(cc, file, extra);
    return finished(cc, errors);
}

// What stands right before the literal, blanks skipped.
bool precededBy(const QString &source, qsizetype at, const QString &word)
{
    qsizetype k = at;
    while (k > 0 && source.at(k - 1).isSpace())
        --k;
    return k >= word.size() && QStringView(source).mid(k - word.size(), word.size()) == word;
}

// The developer's review: literals on preprocessor and comment lines and
// those that must stay literals go; literals that feed a char pointer are cast.
QList<TvxFoundString> review(const QString &source, const QList<TvxFoundString> &found)
{
    TvxFoundList list(found);
    // A text joined from several literals inside tr() stays as it is.
    QSet<int> joined;
    for (int r = 1; r <= list.rowCount(); ++r) {
        if (!precededBy(source, list.row(r).position, QStringLiteral("tr(")))
            continue;
        for (int k = r; k <= list.rowCount() && list.row(r).replacement.endsWith(QLatin1String(" + ")); ++k) {
            joined.insert(k);
            if (!list.row(k).replacement.endsWith(QLatin1String(" + ")))
                break;
        }
    }
    for (int r = list.rowCount(); r >= 1; --r) {
        const TvxFoundString &row = list.row(r);
        const QString line = row.sourceLine.trimmed();
        const bool keepLiteral = joined.contains(r) || line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1String("//"))
            || line.startsWith(QLatin1Char('*')) || line.startsWith(QLatin1String("/*"))
            || precededBy(source, row.position, QStringLiteral("QStringLiteral("))
            || precededBy(source, row.position, QStringLiteral("QLatin1String("))
            || precededBy(source, row.position, QStringLiteral("QLatin1Char("))
            || precededBy(source, row.position, QStringLiteral("SIGNAL("))
            || precededBy(source, row.position, QStringLiteral("SLOT("));
        if (keepLiteral)
            list.deleteRow(r);
    }
    for (int r = 1; r <= list.rowCount(); ++r) {
        const qsizetype at = list.row(r).position;
        if (precededBy(source, at, QStringLiteral("tr(")) || precededBy(source, at, QStringLiteral("QT_TR_NOOP("))
            || precededBy(source, at, QStringLiteral("setProperty(")))
            list.castToCharPointer(r);
    }
    return list.rows();
}

} // namespace

class tst_ExpertCompile : public QObject
{
    Q_OBJECT
private slots:
    void generatedCallsWithoutAsciiCasts();
    void castOfAJoinedLiteralCompiles();
    void rewrittenExamples_data();
    void rewrittenExamples();

private:
    QTemporaryDir m_dir;
};

void tst_ExpertCompile::generatedCallsWithoutAsciiCasts()
{
    QVERIFY(m_dir.isValid());
    const QString src = QStringLiteral(R"(#include "vxcomp.h"
#include <QtWidgets/QLabel>

struct Ui_Form1 { TVexil *Vexil1; };

static const char *plain(const char *s) { return s; }

void own(Ui_Form1 *ui, QLabel *label)
{
    label->setText("Own unit, text longer than fifteen");
    label->setText("joined " "text");
    plain("pointer");
}

void other(QLabel *label)
{
    label->setText("Other unit");
}
)");
    const TvxScanResult own = scanStatements(src.left(src.indexOf(QLatin1String("void other"))),
                                             callPrefix(QStringLiteral("Form1"), QStringLiteral("Vexil1"), true), 0);
    QCOMPARE(own.rows.size(), 4);
    TvxFoundList ownList(own.rows);
    ownList.castToCharPointer(4);
    const qsizetype split = src.indexOf(QLatin1String("void other"));
    const QString ownPart = rewriteStatements(src.left(split), ownList.rows());

    const QString otherSrc = QStringLiteral("\n{\n") + src.mid(split);
    const TvxScanResult other = scanStatements(otherSrc, callPrefix(QStringLiteral("Form1"), QStringLiteral("Vexil1"), false), 4);
    QCOMPARE(other.rows.size(), 1);
    const QString rewritten = ownPart + rewriteStatements(otherSrc, other.rows).mid(3);
    QVERIFY(rewritten.contains(QLatin1String("VEXIL_FORM(Form1)->GetText(\"IDS_4\" /* \"Other unit\" */ )")));
    QVERIFY(rewritten.contains(QLatin1String("qPrintable(ui->Vexil1->GetText(")));

    const QString file = m_dir.filePath(QStringLiteral("generated.cpp"));
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(rewritten.toUtf8());
    out.close();
    QString errors;
    QVERIFY2(compiles(file, {QStringLiteral("-DQT_NO_CAST_FROM_ASCII")}, &errors),
             qPrintable(rewritten + errors));
}

void tst_ExpertCompile::castOfAJoinedLiteralCompiles()
{
    // The cast put on the first of two joined literals: the sum of a char
    // pointer and the second call is a QString again.
    QVERIFY(m_dir.isValid());
    const QString src = QStringLiteral(R"(#include "vxcomp.h"
#include <QtWidgets/QLabel>

struct Ui_Form1 { TVexil *Vexil1; };

void own(Ui_Form1 *ui, QLabel *label)
{
    label->setText("first half, " "second half");
}
)");
    TvxFoundList list(scanStatements(src, callPrefix(QStringLiteral("Form1"), QStringLiteral("Vexil1"), true), 0).rows);
    QCOMPARE(list.rowCount(), 2);
    list.castToCharPointer(1);
    const QString rewritten = rewriteStatements(src, list.rows());
    QVERIFY(rewritten.contains(QLatin1String("qPrintable(ui->Vexil1->GetText(\"IDS_0\"")));
    const QString file = m_dir.filePath(QStringLiteral("joined.cpp"));
    QFile out(file);
    QVERIFY(out.open(QIODevice::WriteOnly));
    out.write(rewritten.toUtf8());
    out.close();
    QString errors;
    QVERIFY2(compiles(file, {}, &errors), qPrintable(rewritten + errors));
}

void tst_ExpertCompile::rewrittenExamples_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("form");
    const QString dir = examplesDir();
    if (!QFileInfo::exists(dir))
        QSKIP("Debian's qtbase5-examples package is not installed (scripts/setup.sh installs it)");
    // Units that compile unchanged against Qt 6 (many Qt 5 examples do not).
    const QList<QPair<QString, QString>> units{
        {QStringLiteral("widgets/widgets/calculator/calculator.cpp"), QStringLiteral("Calculator")},
        {QStringLiteral("widgets/widgets/lineedits/window.cpp"), QStringLiteral("Window")},
        {QStringLiteral("widgets/widgets/tetrix/tetrixwindow.cpp"), QStringLiteral("TetrixWindow")},
        {QStringLiteral("widgets/layouts/basiclayouts/dialog.cpp"), QStringLiteral("Dialog")},
    };
    for (const auto &unit : units)
        QTest::newRow(qPrintable(unit.first)) << dir + QLatin1Char('/') + unit.first << unit.second;
}

void tst_ExpertCompile::rewrittenExamples()
{
    QFETCH(QString, file);
    QFETCH(QString, form);
    QVERIFY(m_dir.isValid());
    const QString include = QStringLiteral("-I") + QFileInfo(file).absolutePath();

    QFile in(file);
    QVERIFY(in.open(QIODevice::ReadOnly));
    const QString source = QString::fromUtf8(in.readAll());
    const TvxScanResult found = scanStatements(source, callPrefix(form, QStringLiteral("Vexil1"), false), 0);
    QVERIFY(found.ok());
    const QList<TvxFoundString> rows = review(source, found.rows);
    QVERIFY2(rows.size() >= 5, qPrintable(QString::number(rows.size())));
    const QString rewritten = rewriteStatements(source, rows);
    QCOMPARE(rewritten.count(QLatin1String("->GetText(\"IDS_")), rows.size());

    const QString target = m_dir.filePath(QFileInfo(file).fileName());
    QFile out(target);
    QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
    out.write(rewritten.toUtf8());
    out.close();

    // The unchanged unit and the rewritten one compile side by side.
    QProcess original;
    QProcess changed;
    startCompile(original, file, {include});
    startCompile(changed, target, {include, QStringLiteral("-include"), QStringLiteral("vxcomp.h")});
    QString originalErrors;
    QString errors;
    const bool originalOk = finished(original, &originalErrors);
    const bool changedOk = finished(changed, &errors);
    if (!originalOk)
        QSKIP(qPrintable(QStringLiteral("does not compile against Qt 6 unchanged: ") + originalErrors.left(300)));
    QVERIFY2(changedOk, qPrintable(errors.left(3000)));
}

QTEST_GUILESS_MAIN(tst_ExpertCompile)
#include "tst_expertcompile.moc"
