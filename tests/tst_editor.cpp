// The grid editor forms driven as a user drives them: keys, header clicks,
// menus, modal questions answered, real files and settings.
#include "editorforms.h"
#include "vxcomp.h"
#include "vxdlgform.h"
#include "vxgridheader.h"
#include "vxgridmodel.h"
#include "vxmultilineeditor.h"
#include "vxrteditor.h"

#include <QtCore/QMimeData>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDropEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>

#include <memory>

namespace {

QAction *action(QWidget *form, const char *name)
{
    return form->findChild<QAction *>(QLatin1String(name));
}

QStringList languageHeaders(const TvxEditorForm &form)
{
    return form.model()->languageHeaders();
}

} // namespace

class TestEditor : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void buildsTheGridPerCategory();
    void firstEditorEverShowsDefaultNames();
    void appliesEditsAndUpperCasesNames();
    void cancelAndCloseBoxKeepEverything();
    void rowsSortingAndClipboard();
    void fileCommandsAndDroppedFiles();
    void runtimeEditor();
    void fontsDropDown();
    void multilineEditor();
    void hintsAndChecksInTheStatusBar();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
};

void TestEditor::init()
{
    // Every test starts on a machine where no editor has run yet.
    m_dir = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir->path());
}

void TestEditor::buildsTheGridPerCategory()
{
    TForm1 owner;
    owner.vx->Captions()->setLines({QStringLiteral("TForm1\tOrders\tBestellungen\t"), QStringLiteral("Button1\tOK\t")});
    {
        TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
        form.show();
        QCOMPARE(form.windowTitle(), QStringLiteral("TVexil.Captions Editor"));
        QCOMPARE(form.model()->columnCount(), 4);
        QCOMPARE(form.model()->header(0), QStringLiteral("Components:"));
        QCOMPARE(form.model()->cell(1, 2), QString()); // fewer fields than languages
        QVERIFY(!tool(&form, "sbAdd")->isEnabled());
        QVERIFY(!tool(&form, "sbDel")->isEnabled());
        QVERIFY(tool(&form, "sbOK")->autoRaise()); // flat speed buttons
        QVERIFY(action(&form, "Multiline1")->isVisible());
        QVERIFY(!(form.model()->flags(form.model()->index(0, 0)) & Qt::ItemIsEditable));
        QVERIFY(form.findChild<QComboBox *>(QStringLiteral("cbComponents"))->isVisible());
        form.BitBtn2Click();
    }
    {
        // Compared as written: "Other strings" has no multi-line command.
        TDlgForm form(owner.vx, QStringLiteral("Other strings"), stOtherStrings, owner.vx->OtherStrings());
        form.show();
        QVERIFY(!action(&form, "Multiline1")->isVisible());
        form.BitBtn2Click();
    }
    {
        TDlgForm form(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings());
        form.show();
        QCOMPARE(form.model()->header(0), QStringLiteral("TextIDs:"));
        QCOMPARE(form.model()->rowCount(), 1); // an empty table gets one blank row
        QVERIFY(tool(&form, "sbAdd")->isEnabled());
        QVERIFY(form.model()->flags(form.model()->index(0, 0)) & Qt::ItemIsEditable);
        form.BitBtn2Click();
    }
    {
        TStringsType kind = stCollections;
        TvxStringList items;
        items.setLines({QStringLiteral("ListBox1.Items[0]\tRed\tRot\t")});
        TDlgForm form(owner.vx, QStringLiteral("Items"), kind, &items);
        form.show();
        QVERIFY(tool(&form, "sbDel")->isEnabled()); // every collection-kind table
        QVERIFY(!action(&form, "Multiline1")->isVisible());
        form.BitBtn2Click();
    }
    {
        TDlgForm form(owner.vx, QStringLiteral("MultiLines"), stMultiLines, owner.vx->MultiLines());
        form.show();
        QVERIFY(!form.model()->cellsEditable());
        QCOMPARE(form.grid()->toolTip(), QStringLiteral("Double click (or press \"Enter\") for edit cell"));
        form.BitBtn2Click();
    }
    {
        TDlgForm form(owner.vx, QStringLiteral("Locales"), stLocales, owner.vx->Locales());
        form.show();
        QCOMPARE(form.model()->header(0), QStringLiteral("System locales"));
        const QString before = form.model()->key(0);
        form.sortByColumn(0); // locale settings keep their order
        QCOMPARE(form.model()->key(0), before);
        form.BitBtn2Click();
    }
}

void TestEditor::firstEditorEverShowsDefaultNames()
{
    TForm1 owner;
    owner.vx->SetLangNames(QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QString()});
    owner.vx->Captions()->setLines({QStringLiteral("Button1\tOK\tOK\tOK\t")});
    {
        TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
        form.show();
        QCOMPARE(languageHeaders(form), QStringList({QStringLiteral("Language N1"), QStringLiteral("Language N2"),
                                                     QStringLiteral("Language N3")}));
        form.grid()->horizontalHeader()->resizeSection(2, 77);
        form.model()->setHeader(3, QStringLiteral("Dutch"));
        form.BitBtn2Click(); // closing stores widths and names
    }
    TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
    form.show();
    // Names from the component where it has them, else the stored ones.
    QCOMPARE(languageHeaders(form),
             QStringList({QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("Dutch")}));
    QCOMPARE(form.grid()->horizontalHeader()->sectionSize(2), 77);
    form.BitBtn2Click();
}

void TestEditor::appliesEditsAndUpperCasesNames()
{
    TForm1 owner;
    owner.vx->SetActLang(2);
    owner.vx->Strings()->setLines({QStringLiteral("1\tYes\tJa\t"), QStringLiteral("2\tNo\t"),
                                   QStringLiteral("3\tMaybe\tVielleicht\tPeut-être\t")});
    TDlgForm form(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings());
    form.show();
    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QTableView *grid = form.grid();

    // Type a translation into a cell.
    grid->setFocus();
    grid->setCurrentIndex(form.model()->index(1, 2));
    QTest::keyClick(grid, Qt::Key_F2);
    QWidget *editor = QApplication::focusWidget();
    QVERIFY(qobject_cast<QLineEdit *>(editor));
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(editor, QStringLiteral("Nein"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(form.model()->cell(1, 2), QStringLiteral("Nein"));

    // Empty a key: that row goes on Apply.
    form.model()->setCell(2, 0, QString());
    // Arrow down on the last row adds one.
    grid->setFocus();
    grid->setCurrentIndex(form.model()->index(2, 1));
    QTest::keyClick(grid, Qt::Key_Down);
    QCOMPARE(form.model()->rowCount(), 4);
    QCOMPARE(grid->currentIndex().row(), 3);
    form.model()->setCell(3, 0, QStringLiteral("4"));
    form.model()->setCell(3, 1, QStringLiteral("Later"));

    // Name the languages through the input boxes; Cancel ends the walk.
    onNextModal([](QWidget *box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("Languages naming"));
        box->findChild<QLineEdit *>()->setText(QStringLiteral("English"));
        onNextModal([](QWidget *second) {
            second->findChild<QLineEdit *>()->setText(QStringLiteral("German"));
            onNextModal([](QWidget *third) { QTest::mouseClick(buttonNamed(third, "Cancel"), Qt::LeftButton); });
            QTest::mouseClick(buttonNamed(second, "OK"), Qt::LeftButton);
        });
        QTest::mouseClick(buttonNamed(box, "OK"), Qt::LeftButton);
    });
    QTest::mouseClick(tool(&form, "sbLanguages"), Qt::LeftButton);
    QCOMPARE(languageHeaders(form),
             QStringList({QStringLiteral("English"), QStringLiteral("German"), QStringLiteral("Language N3")}));

    form.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&form));
    QTest::keyClick(&form, Qt::Key_K, Qt::ControlModifier); // Apply
    QVERIFY(form.applied());
    QCOMPARE(form.result(), QStringList({QStringLiteral("1\tYes\tJa\t\t"), QStringLiteral("2\tNo\tNein\t\t"),
                                         QStringLiteral("4\tLater\t\t\t")}));
    QCOMPARE(owner.vx->LangNames()->lines(),
             QStringList({QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("LANGUAGE N3")}));
    QCOMPARE(owner.vx->ActiveLanguage(), 2);
    QCOMPARE(form.result().size(), 3);
}

void TestEditor::cancelAndCloseBoxKeepEverything()
{
    TForm1 owner;
    owner.vx->SetActLang(3);
    const QStringList lines{QStringLiteral("1\tYes\tJa\tOui\t")};
    owner.vx->Strings()->setLines(lines);

    // The close box asks; No keeps the editor, Yes closes it without changes.
    QString question;
    onNextModal([&question](QWidget *editor) {
        auto *form = qobject_cast<TvxEditorForm *>(editor);
        form->model()->setCell(0, 1, QStringLiteral("Changed"));
        answer("No", &question);
        form->close();
        QVERIFY(form->isVisible());
        answer("Yes");
        QTest::keyClick(form, Qt::Key_Escape);
    });
    QVERIFY(!TDlgForm::ShowDesigner(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings()));
    QCOMPARE(question, QStringLiteral("Close TVexil.Strings Editor without changes?"));
    QCOMPARE(owner.vx->Strings()->lines(), lines);
    QCOMPARE(owner.vx->ActiveLanguage(), 3);

    // Apply replaces the whole table.
    onNextModal([](QWidget *editor) {
        auto *form = qobject_cast<TvxEditorForm *>(editor);
        form->model()->setCell(0, 1, QStringLiteral("Sure"));
        QTest::mouseClick(tool(form, "sbOK"), Qt::LeftButton);
    });
    QVERIFY(TDlgForm::ShowDesigner(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings()));
    QCOMPARE(owner.vx->Strings()->lines(), QStringList({QStringLiteral("1\tSure\tJa\tOui\t")}));
    QCOMPARE(owner.vx->ActiveLanguage(), 3);
}

void TestEditor::rowsSortingAndClipboard()
{
    TForm1 owner;
    owner.vx->Strings()->setLines({QStringLiteral("Form1\tZ\t"), QStringLiteral("b\tbeta\t"),
                                   QStringLiteral("c\tBeta\t"), QStringLiteral("d\talpha\t")});
    TDlgForm form(owner.vx, QStringLiteral("Strings"), stStrings, owner.vx->Strings());
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto *header = qobject_cast<TvxGridHeader *>(form.grid()->horizontalHeader());
    QVERIFY(header);

    // A left click on a header sorts by it; the form's own row stays on top.
    const QPoint onColumn1(header->sectionViewportPosition(1) + 30, header->height() / 2);
    QTest::mousePress(header->viewport(), Qt::LeftButton, {}, onColumn1);
    QCOMPARE(header->pressedColumn(), 1);
    QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, onColumn1);
    QCOMPARE(header->pressedColumn(), -1);
    QCOMPARE(header->sortColumn(), 1);
    QStringList keys;
    for (int r = 0; r < form.model()->rowCount(); ++r)
        keys << form.model()->key(r);
    QCOMPARE(keys, QStringList({QStringLiteral("Form1"), QStringLiteral("c"), QStringLiteral("d"), QStringLiteral("b")}));
    // A right click does not sort.
    QTest::mouseClick(header->viewport(), Qt::RightButton, {}, QPoint(header->sectionViewportPosition(0) + 30, 5));
    QCOMPARE(header->sortColumn(), 1);

    // Delete asks with the row's key.
    form.grid()->setCurrentIndex(form.model()->index(1, 1));
    QString question;
    answer("Yes", &question);
    QTest::mouseClick(tool(&form, "sbDel"), Qt::LeftButton);
    QCOMPARE(question, QStringLiteral("Delete selected row: \"c\"?"));
    QCOMPARE(form.model()->rowCount(), 3);
    answer("No");
    QTest::mouseClick(tool(&form, "sbDel"), Qt::LeftButton);
    QCOMPARE(form.model()->rowCount(), 3);

    // Clipboard commands act on the current cell.
    form.grid()->setCurrentIndex(form.model()->index(1, 1));
    action(&form, "Cut1")->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("alpha"));
    QCOMPARE(form.model()->cell(1, 1), QString());
    QGuiApplication::clipboard()->setText(QStringLiteral("first line\nsecond line"));
    action(&form, "Paste1")->trigger();
    QCOMPARE(form.model()->cell(1, 1), QStringLiteral("first line"));

    // Adding a row moves to its key cell; the component list follows.
    QTest::mouseClick(tool(&form, "sbAdd"), Qt::LeftButton);
    QCOMPARE(form.grid()->currentIndex(), form.model()->index(3, 0));
    auto *components = form.findChild<QComboBox *>(QStringLiteral("cbComponents"));
    QCOMPARE(components->count(), 4);
    components->setCurrentIndex(1);
    Q_EMIT components->activated(1);
    QCOMPARE(form.grid()->currentIndex(), form.model()->index(1, 1));

    // Clear asks, then leaves a single blank row.
    answer("Yes", &question);
    QTest::mouseClick(tool(&form, "sbClear"), Qt::LeftButton);
    QCOMPARE(question, QStringLiteral("Delete all information?"));
    QCOMPARE(form.model()->rowCount(), 1);
    QVERIFY(form.model()->isBlankRow(0));
    form.BitBtn2Click();
}

void TestEditor::fileCommandsAndDroppedFiles()
{
    TForm1 owner;
    owner.vx->Captions()->setLines({QStringLiteral("Button1\tOK\tJa\t"), QStringLiteral("Label1\tTwo\nlines\tZwei\nZeilen\t")});
    const QString file = m_dir->filePath(QStringLiteral("app.lng"));
    {
        TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
        form.show();
        onNextModal([file](QWidget *dialog) {
            auto *save = qobject_cast<QFileDialog *>(dialog);
            QVERIFY(save);
            // What a user types into the name field.
            save->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(file);
            QMetaObject::invokeMethod(save, "accept");
        });
        QTest::mouseClick(tool(&form, "sbSave"), Qt::LeftButton);
        form.BitBtn2Click();
    }
    QVERIFY(QFile::exists(file));
    QSettings tools(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Borland"), QStringLiteral("TVexil"));
    QCOMPARE(tools.value(QStringLiteral("Delimiter")).toString(), QStringLiteral("|"));

    owner.vx->Captions()->setLines({QStringLiteral("Button1\tchanged\t")});
    TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
    form.show();
    const auto drop = [&form](const QStringList &files) {
        auto *data = new QMimeData;
        QList<QUrl> urls;
        for (const QString &f : files)
            urls << QUrl::fromLocalFile(f);
        data->setUrls(urls);
        // As a drag from a file manager arrives: entering first, then the drop.
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&form, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(QPointF(10, 10), Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&form, &event);
        delete data;
    };

    // Dropping two files loads the first only, after the question.
    answer("Yes");
    drop({file, m_dir->filePath(QStringLiteral("other.lng"))});
    QCOMPARE(form.model()->rowCount(), 2);
    QCOMPARE(form.model()->cell(0, 1), QStringLiteral("OK"));
    QCOMPARE(form.model()->cell(1, 2), QStringLiteral("Zwei\nZeilen"));

    // A file without this category: a message, and the grid as it was.
    QFile empty(m_dir->filePath(QStringLiteral("empty.lng")));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.write("[OPTIONS]\nDELIMITER=|\n");
    empty.close();
    QString message;
    onNextModal([&message](QWidget *box) {
        answer("OK", &message);
        QTest::mouseClick(buttonNamed(box, "Yes"), Qt::LeftButton);
    });
    drop({empty.fileName()});
    QCOMPARE(message, QStringLiteral("There are no information for this property in selected file!"));
    QCOMPARE(form.model()->rowCount(), 2);
    QCOMPARE(form.model()->cell(0, 1), QStringLiteral("OK"));

    // No to the first question loads nothing.
    form.model()->setCell(0, 1, QStringLiteral("kept"));
    answer("No");
    drop({file});
    QCOMPARE(form.model()->cell(0, 1), QStringLiteral("kept"));
    form.BitBtn2Click();
}

void TestEditor::runtimeEditor()
{
    QCOMPARE(TfrmRTEditor::categoryName(stOtherStrings), QStringLiteral("Other strings"));
    QCOMPARE(TfrmRTEditor::categoryName(stCharSets), QStringLiteral("CharSets"));
    QCOMPARE(TfrmRTEditor::categoryName(stListView_TreeView_Items), QStringLiteral("ListView_TreeView_Items"));

    TForm1 owner;
    auto *button = new QPushButton(QStringLiteral("Send"), &owner);
    button->setObjectName(QStringLiteral("Button1"));
    owner.vx->SetLangNames(QStringList{QStringLiteral("ENGLISH"), QStringLiteral("GERMAN"), QStringLiteral("FRENCH")});

    QString title;
    bool componentListShown = true;
    onNextModal([&](QWidget *editor) {
        auto *form = qobject_cast<TfrmRTEditor *>(editor);
        QVERIFY(form);
        title = form->findChild<QMenu *>(QStringLiteral("Dictionary1"))->title();
        componentListShown = form->findChild<QComboBox *>(QStringLiteral("cbComponents"))->isVisible();
        // The table was brought in step with the form before it opened.
        const int row = form->model()->findKey(QStringLiteral("Button1"));
        QVERIFY(row >= 0);
        form->model()->setCell(row, 2, QStringLiteral("Senden"));
        QTest::mouseClick(tool(form, "sbCancel"), Qt::LeftButton);
    });
    QCOMPARE(TfrmRTEditor::ShowDesigner(owner.vx, owner.vx->Captions(), stCaptions), int(mrNo));
    QCOMPARE(title, QStringLiteral("&Dictionary"));
    QVERIFY(!componentListShown);
    QCOMPARE(button->text(), QStringLiteral("Send"));
    const QStringList before = owner.vx->Captions()->lines();

    owner.vx->SetActLang(2);
    onNextModal([](QWidget *editor) {
        auto *form = qobject_cast<TfrmRTEditor *>(editor);
        form->model()->setCell(form->model()->findKey(QStringLiteral("Button1")), 2, QStringLiteral("Senden"));
        QTest::mouseClick(tool(form, "sbOK"), Qt::LeftButton);
    });
    QCOMPARE(TfrmRTEditor::ShowDesigner(owner.vx, owner.vx->Captions(), stCaptions), int(mrYes));
    QCOMPARE(button->text(), QStringLiteral("Senden")); // applied at once
    QVERIFY(owner.vx->Captions()->lines() != before);
    QCOMPARE(owner.vx->ActiveLanguage(), 2);

    // Adding a row at run time keeps one fixed row and moves to the new key.
    TfrmRTEditor form(owner.vx, stStrings, owner.vx->Strings());
    form.show();
    QTest::mouseClick(tool(&form, "sbAdd"), Qt::LeftButton);
    QCOMPARE(form.grid()->currentIndex(), form.model()->index(form.model()->rowCount() - 1, 0));
    form.BitBtn2Click();
}

void TestEditor::fontsDropDown()
{
    TForm1 owner;
    owner.vx->CharSets()->setLines({QStringLiteral("TForm1\tDEFAULT_CHARSET\tRUSSIAN_CHARSET\t")});
    TDlgForm form(owner.vx, QStringLiteral("CharSets"), stCharSets, owner.vx->CharSets());
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    auto *list = form.findChild<QComboBox *>(QStringLiteral("cbList"));
    QVERIFY(list);
    QCOMPARE(list->count(), 19);
    QVERIFY(!form.model()->cellsEditable());

    form.grid()->setCurrentIndex(form.model()->index(0, 2));
    QVERIFY(list->isVisible());
    QCOMPARE(list->currentText(), QStringLiteral("RUSSIAN_CHARSET"));
    QCOMPARE(list->geometry().topLeft(), form.grid()->visualRect(form.model()->index(0, 2)).topLeft());
    const int greek = list->findText(QStringLiteral("GREEK_CHARSET"));
    list->setCurrentIndex(greek);
    Q_EMIT list->activated(greek);
    QCOMPARE(form.model()->cell(0, 2), QStringLiteral("GREEK_CHARSET"));

    const QList<QAction *> clear = list->actions();
    QVERIFY(!clear.isEmpty());
    clear.first()->trigger();
    QCOMPARE(form.model()->cell(0, 2), QString());
    QCOMPARE(list->currentIndex(), -1);

    // Scrolling hides it; the key column does not show it.
    form.grid()->setCurrentIndex(form.model()->index(0, 0));
    QVERIFY(!list->isVisible());
    form.BitBtn2Click();
}

void TestEditor::multilineEditor()
{
    QString result;
    onNextModal([](QWidget *box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("Input new value for Memo1 property."));
        auto *memo = box->findChild<QPlainTextEdit *>();
        QCOMPARE(memo->toPlainText(), QStringLiteral("one\ntwo words"));
        QCOMPARE(box->findChild<QLabel *>(QStringLiteral("LinesLabel"))->text(), QStringLiteral("2 lines"));
        memo->appendPlainText(QStringLiteral("three"));
        QCOMPARE(box->findChild<QLabel *>(QStringLiteral("LinesLabel"))->text(), QStringLiteral("3 lines"));
        QTest::mouseClick(buttonNamed(box, "OKButton"), Qt::LeftButton);
    });
    QVERIFY(ShowMultilineEditor(QStringLiteral("one,\"two words\""), QStringLiteral("Memo1"), mrtCommaText, result));
    QCOMPARE(result, QStringLiteral("one,\"two words\",three"));

    onNextModal([](QWidget *box) { QTest::keyClick(box->findChild<QPlainTextEdit *>(), Qt::Key_Escape); });
    QVERIFY(!ShowMultilineEditor(QStringLiteral("x"), QStringLiteral("Label1"), mrtText, result));

    // In the grid: two lines typed in the editor stay two lines in the cell.
    TForm1 owner;
    owner.vx->Captions()->setLines({QStringLiteral("Label1\tOne\t")});
    TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
    form.show();
    form.grid()->setCurrentIndex(form.model()->index(0, 1));
    onNextModal([](QWidget *box) {
        QCOMPARE(box->windowTitle(), QStringLiteral("Input new value for Label1 property."));
        box->findChild<QPlainTextEdit *>()->setPlainText(QStringLiteral("One\nTwo"));
        QTest::mouseClick(buttonNamed(box, "OKButton"), Qt::LeftButton);
    });
    action(&form, "Multiline1")->trigger();
    QCOMPARE(form.model()->cell(0, 1), QStringLiteral("One\nTwo"));
    form.BitBtn1Click();
    QCOMPARE(form.result(), QStringList({QStringLiteral("Label1\tOne\nTwo\t\t\t")}));
}

void TestEditor::hintsAndChecksInTheStatusBar()
{
    TForm1 owner;
    owner.vx->Captions()->setLines({QStringLiteral("Button1\t&Open %1\t&Öffnen %1\tOuvrir\t")});
    TDlgForm form(owner.vx, QStringLiteral("Captions"), stCaptions, owner.vx->Captions());
    form.show();
    QVERIFY(QTest::qWaitForWindowExposed(&form));
    QToolButton *save = tool(&form, "sbSave");
    QCOMPARE(save->toolTip(), QStringLiteral("Save Ctrl+S"));
    QStatusTipEvent tip(save->statusTip());
    QApplication::sendEvent(save, &tip);
    auto *status = form.findChild<QStatusBar *>(QStringLiteral("StatusBar1"));
    QCOMPARE(status->currentMessage(), QStringLiteral("Save strings to file..."));

    // The French text lacks the placeholder and the accelerator.
    QCOMPARE(form.model()->differenceCount(), 1);
    QVERIFY(form.findChild<QLabel *>(QStringLiteral("DifferenceCount"))->text().startsWith(QLatin1String("1 text")));
    const QString why = form.model()->data(form.model()->index(0, 3), Qt::ToolTipRole).toString();
    QVERIFY(why.contains(QLatin1String("placeholders")) && why.contains(QLatin1String("accelerator")));
    // Cells and in-place editors take the font of their language.
    owner.vx->Fonts()->setLines({QStringLiteral("Button1\tDejaVu Sans\tDejaVu Serif\t"),
                                 QStringLiteral("TForm1\tDejaVu Sans\tDejaVu Sans\tDejaVu Sans Mono\t")});
    form.BuildGrid();
    const QModelIndex german = form.model()->index(0, 2);
    QCOMPARE(form.model()->data(german, Qt::FontRole).value<QFont>().families().value(0), QStringLiteral("DejaVu Serif"));
    QCOMPARE(form.model()->data(form.model()->index(0, 3), Qt::FontRole).value<QFont>().families().value(0),
             QStringLiteral("DejaVu Sans Mono")); // the form's font for that language
    form.grid()->setCurrentIndex(german);
    form.grid()->edit(german);
    QCOMPARE(form.grid()->indexWidget(german)->font().families().value(0), QStringLiteral("DejaVu Serif"));

    // The delimiter button: pressed it shows the field, Enter takes its text.
    QToolButton *delimiter = tool(&form, "sbDelimiter");
    auto *field = form.findChild<QLineEdit *>(QStringLiteral("edDelim"));
    delimiter->click();
    QVERIFY(field->isVisible());
    QCOMPARE(field->text(), QStringLiteral("|"));
    field->setText(QStringLiteral(";"));
    delimiter->click();
    QVERIFY(!field->isVisible());
    QCOMPARE(delimiter->text(), QStringLiteral(";"));
    QCOMPARE(form.fileDelimiter(), QLatin1Char(';'));

    // Marks never stop Apply.
    form.BitBtn1Click();
    QVERIFY(form.applied());
}

QTEST_MAIN(TestEditor)
#include "tst_editor.moc"
