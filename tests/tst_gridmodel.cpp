// The grid editor's model: cutting table lines into cells and back,
// rows, sorting and the translation checks, without a widget.
#include "vxgridmodel.h"

#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

class TestGridModel : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cutsAndJoinsLines();
    void keysAndRows();
    void sortIsStableAndKeepsTheFormRow();
    void checksMarkDifferences();
    void refusesTheDelimiter();
};

void TestGridModel::cutsAndJoinsLines()
{
    TvxGridModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.build({QStringLiteral("Form1|Title|Titel|"), QStringLiteral("Button1|OK|"),
                 QStringLiteral("Label1|Name|Naam"), QStringLiteral("Bare"), QStringLiteral("Edit1|||Extra|")},
                QLatin1Char('|'), 2);
    QCOMPARE(model.rowCount(), 5);
    QCOMPARE(model.columnCount(), 3);
    QCOMPARE(model.cell(0, 2), QStringLiteral("Titel"));
    // Fewer fields than languages: empty cells.
    QCOMPARE(model.cell(1, 2), QString());
    // An unclosed last field keeps its text.
    QCOMPARE(model.cell(2, 2), QStringLiteral("Naam"));
    QCOMPARE(model.key(3), QStringLiteral("Bare"));
    // Fields beyond the languages are not cells.
    QCOMPARE(model.cell(4, 1), QString());
    QCOMPARE(model.headerData(2, Qt::Horizontal).toString(), QStringLiteral("Language N2"));

    // Every row comes back with exactly one field per column, each closed.
    QCOMPARE(model.lines(QLatin1Char('|')),
             QStringList({QStringLiteral("Form1|Title|Titel|"), QStringLiteral("Button1|OK||"),
                          QStringLiteral("Label1|Name|Naam|"), QStringLiteral("Bare|||"),
                          QStringLiteral("Edit1|||")}));
    // A row whose key was emptied is dropped.
    model.setCell(1, 0, QString());
    QCOMPARE(model.lines(QLatin1Char('\t')).size(), 4);
    QVERIFY(model.lines(QLatin1Char('\t')).first().endsWith(QLatin1Char('\t')));
}

void TestGridModel::keysAndRows()
{
    TvxGridModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.build({QStringLiteral("A|1|"), QStringLiteral("B|2|"), QStringLiteral("A|3|")}, QLatin1Char('|'), 1);
    QCOMPARE(model.findKey(QStringLiteral("A")), 0); // the first row of a key
    QCOMPARE(model.findKey(QStringLiteral("a")), -1);
    model.setCell(0, 0, QStringLiteral("C"));
    QCOMPARE(model.findKey(QStringLiteral("A")), 2);
    QCOMPARE(model.findKey(QStringLiteral("C")), 0);

    const int added = model.appendRow();
    QCOMPARE(added, 3);
    QVERIFY(model.isBlankRow(3));
    model.setCell(3, 0, QStringLiteral("D"));
    QCOMPARE(model.findKey(QStringLiteral("D")), 3);
    model.removeDataRow(1);
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.findKey(QStringLiteral("D")), 2);
    QCOMPARE(model.findKey(QStringLiteral("B")), -1);

    model.clearRows();
    QCOMPARE(model.rowCount(), 1);
    QVERIFY(model.isBlankRow(0));
    QCOMPARE(model.findKey(QStringLiteral("D")), -1);

    // Key editing follows the developer's choice per category.
    QVERIFY(!(model.flags(model.index(0, 0)) & Qt::ItemIsEditable));
    model.setKeysEditable(true);
    QVERIFY(model.flags(model.index(0, 0)) & Qt::ItemIsEditable);
    model.setCellsEditable(false);
    QVERIFY(!(model.flags(model.index(0, 1)) & Qt::ItemIsEditable));
}

void TestGridModel::sortIsStableAndKeepsTheFormRow()
{
    TvxGridModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QStringList lines{QStringLiteral("TForm1|Zeta|"), QStringLiteral("b1|beta|"), QStringLiteral("b2|Beta|"),
                            QStringLiteral("b3|beta|"), QStringLiteral("b4|alpha|"), QStringLiteral("b5|Beta|")};
    model.build(lines, QLatin1Char('|'), 1);
    const QPersistentModelIndex followed = model.index(4, 1);

    model.sortByColumn(1, true);
    QStringList keys;
    for (int r = 0; r < model.rowCount(); ++r)
        keys << model.key(r);
    // Ordinal and case-sensitive: capitals first; equal texts keep their order.
    QCOMPARE(keys, QStringList({QStringLiteral("TForm1"), QStringLiteral("b2"), QStringLiteral("b5"),
                                QStringLiteral("b4"), QStringLiteral("b1"), QStringLiteral("b3")}));
    QCOMPARE(followed.row(), 3); // views keep their place on the moved row
    QCOMPARE(model.findKey(QStringLiteral("b1")), 4);

    model.sortByColumn(1, false);
    QCOMPARE(model.key(2), QStringLiteral("TForm1")); // "Zeta" sorts after "Beta"
    model.sortByColumn(7, false); // no such column: nothing happens
    QCOMPARE(model.key(2), QStringLiteral("TForm1"));
}

void TestGridModel::checksMarkDifferences()
{
    TvxGridModel model;
    model.setChecksEnabled(true);
    QSignalSpy counted(&model, &TvxGridModel::differenceCountChanged);
    model.build({QStringLiteral("a|Open %1 of %2|Öffne %1 von %2|Ouvrir %1|"),
                 QStringLiteral("b|&File|&Datei|Fichier|"),
                 QStringLiteral("c|Save as...|Speichern unter...|Enregistrer sous |"),
                 QStringLiteral("d|100%% done|100%% fertig||"),
                 QStringLiteral("e|Fish && Chips|Fisch && Pommes|&Poisson|")},
                QLatin1Char('|'), 3);
    QCOMPARE(model.differences(0, 2), TvxGridModel::Differences());
    QCOMPARE(model.differences(0, 3), TvxGridModel::Differences(TvxGridModel::PlaceholderDiffers));
    QCOMPARE(model.differences(1, 3), TvxGridModel::Differences(TvxGridModel::AcceleratorDiffers));
    QCOMPARE(model.differences(2, 3), TvxGridModel::Differences(TvxGridModel::EndingDiffers));
    QCOMPARE(model.differences(3, 3), TvxGridModel::Differences()); // not translated yet
    QCOMPARE(model.differences(4, 2), TvxGridModel::Differences()); // "&&" is no accelerator
    QCOMPARE(model.differences(4, 3), TvxGridModel::Differences(TvxGridModel::AcceleratorDiffers));
    QCOMPARE(model.differenceCount(), 4);
    QVERIFY(model.data(model.index(0, 3), Qt::ToolTipRole).toString().contains(QLatin1String("placeholders")));
    QVERIFY(!model.data(model.index(0, 2), Qt::ToolTipRole).isValid());

    // Fixing the cell, or changing the first language, updates the count.
    model.setCell(0, 3, QStringLiteral("Ouvrir %1 sur %2"));
    QCOMPARE(model.differenceCount(), 3);
    model.setCell(1, 1, QStringLiteral("File"));
    QCOMPARE(model.differences(1, 2), TvxGridModel::Differences(TvxGridModel::AcceleratorDiffers));
    QCOMPARE(model.differences(1, 3), TvxGridModel::Differences());
    QCOMPARE(model.differenceCount(), 3);
    model.removeDataRow(2);
    QCOMPARE(model.differenceCount(), 2);
    QCOMPARE(counted.last().first().toInt(), 2);
    model.sortByColumn(1, false);
    QCOMPARE(model.differences(model.findKey(QStringLiteral("e")), 3),
             TvxGridModel::Differences(TvxGridModel::AcceleratorDiffers));
}

void TestGridModel::refusesTheDelimiter()
{
    TvxGridModel model;
    model.build({QStringLiteral("a|x|")}, QLatin1Char('|'), 1);
    QVERIFY(!model.setData(model.index(0, 1), QStringLiteral("x|y")));
    QCOMPARE(model.cell(0, 1), QStringLiteral("x"));
    QVERIFY(model.setData(model.index(0, 1), QStringLiteral("x/y")));
    QCOMPARE(model.lines(QLatin1Char('|')), QStringList({QStringLiteral("a|x/y|")}));
}

QTEST_GUILESS_MAIN(TestGridModel)
#include "tst_gridmodel.moc"
