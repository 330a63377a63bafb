// The localised common dialogs: Qt's dialogs, shown for real, with their
// labels and buttons in the linked component's language.
#include "vxcomp.h"
#include "vxdialog.h"
#include "vxfinddialog.h"

#include <QtTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

namespace {

void translate(TVexil &vx, const char *key, const char *german)
{
    const int i = vx.DlgsCaptions()->indexOfKey(QLatin1String(key), QLatin1Char('\t'));
    QVERIFY(i >= 0);
    const QString english = vx.DlgsCaptions()->at(i).section(QLatin1Char('\t'), 1, 1);
    vx.DlgsCaptions()->replace(i, QLatin1String(key) + QLatin1Char('\t') + english + QLatin1Char('\t')
                                      + QString::fromUtf8(german) + QLatin1Char('\t'));
}

QStringList texts(QWidget *dialog)
{
    QStringList list;
    for (QLabel *l : dialog->findChildren<QLabel *>())
        list << l->text();
    for (QAbstractButton *b : dialog->findChildren<QAbstractButton *>())
        list << b->text();
    for (QGroupBox *g : dialog->findChildren<QGroupBox *>())
        list << g->title();
    return list;
}

} // namespace

class TstCommonDialogs : public QObject
{
    Q_OBJECT
private slots:
    void init()
    {
        vx = std::make_unique<TVexil>();
        vx->SetNumLang(2);
        vx->SetActLang(2);
    }
    void openDialog();
    void saveDialogsLabelTheirFolder();
    void vexilIsAProperty();
    void colorAndFontDialogs();
    void findAndReplace();
    void linkClearedWithComponent();

private:
    std::unique_ptr<TVexil> vx;
};

void TstCommonDialogs::openDialog()
{
    translate(*vx, "File name:", "Datei&name:");
    translate(*vx, "Open", "Ö&ffnen");
    translate(*vx, "Look in:", "Suchen in:");
    TvxOpenDialog dialog;
    const QStringList english = (dialog.show(), texts(&dialog));
    dialog.hide();
    QVERIFY(english.contains(QStringLiteral("File &name:")));

    dialog.SetVexil(vx.get());
    dialog.show();
    QCOMPARE(dialog.labelText(QFileDialog::FileName), QStringLiteral("Datei&name:"));
    QCOMPARE(dialog.labelText(QFileDialog::LookIn), QStringLiteral("Suchen in:"));
    QCOMPARE(dialog.labelText(QFileDialog::Accept), QStringLiteral("Ö&ffnen"));
    const QStringList german = texts(&dialog);
    QVERIFY(german.contains(QStringLiteral("Datei&name:")));
    // "Cancel" has no German text: Qt's own stays.
    QCOMPARE(german.count(QStringLiteral("&Cancel")) + german.count(QStringLiteral("Cancel")),
             english.count(QStringLiteral("&Cancel")) + english.count(QStringLiteral("Cancel")));
    dialog.hide();

    // Shown again in the other language, the same controls follow.
    vx->SetActLang(1);
    dialog.show();
    QCOMPARE(dialog.labelText(QFileDialog::FileName), QStringLiteral("File &name:"));
    dialog.hide();
}

void TstCommonDialogs::saveDialogsLabelTheirFolder()
{
    translate(*vx, "Look in:", "Suchen in:");
    translate(*vx, "Save in:", "Speichern in:");
    translate(*vx, "Save", "&Speichern");
    TvxSaveDialog save;
    save.SetVexil(vx.get());
    save.show();
    QCOMPARE(save.labelText(QFileDialog::LookIn), QStringLiteral("Speichern in:"));
    QCOMPARE(save.labelText(QFileDialog::Accept), QStringLiteral("&Speichern"));
    save.hide();
    // The picture dialog saves too, but labels its folder as the Open dialogs do.
    TvxSavePictureDialog picture;
    picture.SetVexil(vx.get());
    picture.show();
    QCOMPARE(picture.labelText(QFileDialog::LookIn), QStringLiteral("Suchen in:"));
    QCOMPARE(picture.labelText(QFileDialog::Accept), QStringLiteral("&Speichern"));
    picture.hide();
}

// The link is a property, so form code and property writes can set it.
void TstCommonDialogs::vexilIsAProperty()
{
    translate(*vx, "Cancel", "Abbrechen");
    const std::vector<std::unique_ptr<QWidget>> dialogs = [] {
        std::vector<std::unique_ptr<QWidget>> list;
        list.emplace_back(new TvxOpenDialog);
        list.emplace_back(new TvxSaveDialog);
        list.emplace_back(new TvxColorDialog);
        list.emplace_back(new TvxFontDialog);
        list.emplace_back(new TvxPrinterSetupDialog);
        list.emplace_back(new TvxPrintDialog);
        list.emplace_back(new TvxFindDialog);
        list.emplace_back(new TvxReplaceDialog);
        list.emplace_back(new TvxOpenPictureDialog);
        list.emplace_back(new TvxSavePictureDialog);
        return list;
    }();
    vx->setObjectName(QStringLiteral("vexil"));
    for (const auto &dialog : dialogs) {
        const QMetaObject *meta = dialog->metaObject();
        const QMetaProperty property = meta->property(meta->indexOfProperty("Vexil"));
        QVERIFY2(property.isValid() && property.isWritable() && property.isDesignable(), meta->className());
        QCOMPARE(property.metaType(), QMetaType::fromType<QString>()); // a name, as .ui files hold it
        QVERIFY(dialog->setProperty("Vexil", QStringLiteral("vexil")));
        QCOMPARE(dialog->property("Vexil").toString(), QStringLiteral("vexil"));
        QCOMPARE(static_cast<TvxLinkedDialog *>(dynamic_cast<TvxLinkedDialog *>(dialog.get()))->Vexil(), vx.get());
        QVERIFY(property.write(dialog.get(), QString()));
        QCOMPARE(dynamic_cast<TvxLinkedDialog *>(dialog.get())->Vexil(), nullptr);
        QVERIFY(property.write(dialog.get(), QStringLiteral("vexil")));
    }
    // A name whose component is built later is found when the dialog shows.
    QWidget form;
    TvxOpenDialog early(&form);
    early.setVexil(QStringLiteral("later"));
    QCOMPARE(early.Vexil(), nullptr);
    TVexil later(&form);
    later.setObjectName(QStringLiteral("later"));
    early.link()->translate();
    QCOMPARE(early.Vexil(), &later);
    // Set that way, the link translates.
    auto *find = static_cast<TvxFindDialog *>(dialogs.at(6).get());
    find->show();
    QVERIFY(texts(find).contains(QStringLiteral("Abbrechen")));
    find->hide();
}

void TstCommonDialogs::colorAndFontDialogs()
{
    translate(*vx, "Basic colors:", "&Grundfarben");
    translate(*vx, "Red:", "&Rot:");
    translate(*vx, "Effects", "Effekte");
    translate(*vx, "Strikeout", "&Durchgestrichen");
    translate(*vx, "OK", "In Ordnung");
    TvxColorDialog color;
    color.SetVexil(vx.get());
    color.show();
    QStringList t = texts(&color);
    QVERIFY(t.contains(QStringLiteral("&Grundfarben")));
    QVERIFY(t.contains(QStringLiteral("&Rot:")));
    QVERIFY(t.contains(QStringLiteral("In Ordnung")));
    color.hide();

    TvxFontDialog font;
    font.SetVexil(vx.get());
    font.show();
    t = texts(&font);
    QVERIFY(t.contains(QStringLiteral("Effekte")));
    QVERIFY(t.contains(QStringLiteral("&Durchgestrichen")));
    font.hide();
}

void TstCommonDialogs::findAndReplace()
{
    translate(*vx, "Find what:", "&Suchen nach:");
    translate(*vx, "Match case", "&Groß-/Kleinschreibung");
    translate(*vx, "Direction", "Richtung");
    translate(*vx, "Replace All", "&Alle ersetzen");
    TvxReplaceDialog dialog;
    dialog.SetVexil(vx.get());
    QSignalSpy all(&dialog, &TvxReplaceDialog::replaceAll);
    QSignalSpy find(&dialog, &TvxFindDialog::find);
    dialog.Execute();
    const QStringList t = texts(&dialog);
    QVERIFY(t.contains(QStringLiteral("&Suchen nach:")));
    QVERIFY(t.contains(QStringLiteral("&Groß-/Kleinschreibung")));
    QVERIFY(t.contains(QStringLiteral("Richtung")));
    QVERIFY(t.contains(QStringLiteral("Re&place with:"))); // untranslated
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("btnReplaceAll")), Qt::LeftButton);
    QTest::mouseClick(dialog.findChild<QPushButton *>(QStringLiteral("btnFindNext")), Qt::LeftButton);
    QCOMPARE(all.count(), 1);
    QCOMPARE(find.count(), 1);
    QVERIFY(dialog.Down());
    QVERIFY(!dialog.MatchCase());
}

void TstCommonDialogs::linkClearedWithComponent()
{
    translate(*vx, "Find what:", "&Suchen nach:");
    TvxFindDialog dialog;
    dialog.SetVexil(vx.get());
    QCOMPARE(dialog.Vexil(), vx.get());
    vx.reset();
    QCOMPARE(dialog.Vexil(), nullptr);
    dialog.show(); // no link: Qt's texts stay
    QVERIFY(texts(&dialog).contains(QStringLiteral("Fi&nd what:")));
}

QTEST_MAIN(TstCommonDialogs)
#include "tst_commondialogs.moc"
