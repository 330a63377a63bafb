// The translation-file editor: what it reads from a file, its window with
// the real grid editor in-process, its bus object in-process, and the real
// program on the session bus.
#include "dialogdriver.h"
#include "memini.h"
#include "vxfileeditorservice.h"
#include "vxfileeditorwindow.h"
#include "vxgridmodel.h"
#include "vxrteditor.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusInterface>
#include <QtDBus/QDBusReply>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>

#include <memory>

namespace {

// Two forms of the application's own classes, a form of a Qt class keyed by
// its object name, three categories, a value with one more text than the
// named languages would hold, and a hand-written value without delimiter.
const char *const SampleFile = "[OPTIONS]\n"
                               "DELIMITER=|\n"
                               "\n"
                               "[Language names - for internal use only!]\n"
                               "Language_1=English\n"
                               "Language_2=German\n"
                               "\n"
                               "[Captions]\n"
                               "TForm1.TForm1=Main|Haupt|\n"
                               "TForm1.Button1=OK|OK|\n"
                               "TForm2.Label1=Name|Name|\n"
                               "Dialog1.QDialog=Dialog|Dialog|\n"
                               "\n"
                               "[Hints]\n"
                               "TForm2.Label1=Your name|Ihr Name|\n"
                               "\n"
                               "[STRINGS]\n"
                               "TForm1.IDS_1=Hello|Hallo|\n"
                               "TForm1.IDS_2=Bye|Ciao|Adieu|\n"
                               "TForm1.IDS_3=Plain\n";

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size();
}

// Every line of every section, as "[section]key=value".
QStringList entries(const QString &path)
{
    TMemIniFile ini(path);
    QStringList sections;
    ini.ReadSections(sections);
    QStringList all;
    for (const QString &section : std::as_const(sections)) {
        QStringList lines;
        ini.ReadSectionValues(section, lines);
        for (const QString &line : std::as_const(lines))
            all << QLatin1Char('[') + section + QLatin1Char(']') + line;
    }
    return all;
}

QToolButton *tool(QWidget *form, const char *name)
{
    return form->findChild<QToolButton *>(QLatin1String(name));
}

// Answers the next question box with the button @p name.
void answer(const char *name)
{
    onNextModal([name](QWidget *box) {
        QPushButton *button = box->findChild<QPushButton *>(QLatin1String(name));
        QVERIFY(button);
        QTest::mouseClick(button, Qt::LeftButton);
    });
}

int rowOf(const TvxGridModel *model, const QString &key)
{
    for (int r = 0; r < model->rowCount(); ++r) {
        if (model->key(r) == key)
            return r;
    }
    return -1;
}

QStringList itemTexts(const QListWidget *list)
{
    QStringList texts;
    for (int r = 0; r < list->count(); ++r)
        texts << list->item(r)->text();
    return texts;
}

bool nameOwned(const QString &name)
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value();
}

// One running vexil-editor serving under a name of its own.
class Program
{
public:
    explicit Program(const QStringList &options = {QStringLiteral("--service")})
    {
        static int counter = 0;
        service = QStringLiteral("VXLEditor.test.p%1.n%2").arg(QCoreApplication::applicationPid()).arg(++counter);
        start(options);
    }
    ~Program()
    {
        if (process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
        }
    }
    void start(const QStringList &options)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(VEXIL_EDITOR_EXE),
                      QStringList{QStringLiteral("--service-name"), service} + options);
    }
    bool ready()
    {
        (void)QTest::qWaitFor([this] { return nameOwned(service) || process.state() == QProcess::NotRunning; },
                              60000);
        return nameOwned(service);
    }
    std::unique_ptr<QDBusInterface> iface() const
    {
        return std::make_unique<QDBusInterface>(service, QStringLiteral("/"),
                                                TvxFileEditorService::interfaceName());
    }

    QString service;
    QProcess process;
};

bool finished(QDBusInterface &editor)
{
    QDBusReply<bool> reply = editor.call(QStringLiteral("EditingFinished"));
    return reply.isValid() && reply.value();
}

} // namespace

class TestFileEditor : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString sample(const QString &name) const
    {
        const QString file = path(name);
        writeFile(file, SampleFile);
        return file;
    }
    static TvxGridModel *grid(TfrmFileEditor &window) { return window.editor()->model(); }

private slots:
    void initTestCase();
    void init();

    void fileInfoListsFormsCategoriesAndLanguages();
    void fileInfoRefusesWhatCannotBeRead();
    void categoryNamesOfEveryKind();

    void windowShowsTheFile();
    void applySavesOnlyThatTable();
    void cancelLeavesTheFileByteIdentical();
    void deletedRowLeavesTheFile();
    void switchingWithUnappliedChangesAsks();
    void startedCategoryIsWrittenOnApply();
    void badFileKeepsTheOpenOne();

    void serviceEditsUntilApplied();
    void serviceLocksTheCategory();
    void serviceRefusals();

    void programAnswersOnTheBus();
    void programRefusesATakenName();
    void activationFileStartsTheProgram();
};

void TestFileEditor::initTestCase()
{
    QVERIFY(QFile::exists(QStringLiteral(VEXIL_EDITOR_EXE)));
}

void TestFileEditor::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
    // The grid editor's settings (column widths, names) stay in the test's folder.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_dir->path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_dir->path());
}

void TestFileEditor::fileInfoListsFormsCategoriesAndLanguages()
{
    TvxTranslationFileInfo info;
    QString error;
    QVERIFY2(info.read(sample(QStringLiteral("a.lng")), &error), qPrintable(error));
    QCOMPARE(info.delimiter, QLatin1Char('|'));
    QCOMPARE(info.languageNames, (QStringList{QStringLiteral("English"), QStringLiteral("German")}));
    // "Bye|Ciao|Adieu|" holds a third text: the tables get room for it.
    QCOMPARE(info.languageCount, 3);
    QCOMPARE(info.forms, (QStringList{QStringLiteral("Dialog1"), QStringLiteral("TForm1"), QStringLiteral("TForm2")}));
    QCOMPARE(info.categories, (QList<TStringsType>{stCaptions, stHints, stStrings}));

    // No language section: the texts tell; another delimiter; keys without
    // a form and sections that are no category are not listed.
    const QString other = path(QStringLiteral("b.lng"));
    QVERIFY(writeFile(other, "[OPTIONS]\nDELIMITER=;\n\n[Fonts]\nTMain.Edit1=Arial;Tahoma;\n"
                             "NoForm=x;y;\n\n[Extra]\nTOther.X=1;2;3;4;\n"));
    QVERIFY(info.read(other, &error));
    QCOMPARE(info.delimiter, QLatin1Char(';'));
    QVERIFY(info.languageNames.isEmpty());
    QCOMPARE(info.languageCount, 2);
    QCOMPARE(info.forms, QStringList{QStringLiteral("TMain")});
    QCOMPARE(info.categories, QList<TStringsType>{stFonts});
}

void TestFileEditor::fileInfoRefusesWhatCannotBeRead()
{
    TvxTranslationFileInfo info;
    QVERIFY(info.read(sample(QStringLiteral("kept.lng")), nullptr));
    QString error;
    QVERIFY(!info.read(path(QStringLiteral("missing.lng")), &error));
    QVERIFY(error.contains(QStringLiteral("does not exist")));
    QVERIFY(!info.read(m_dir->path(), &error));
    QVERIFY(error.contains(QStringLiteral("cannot be read")));
    // A refused read leaves what was read before.
    QCOMPARE(info.forms.size(), 3);
}

void TestFileEditor::categoryNamesOfEveryKind()
{
    for (int t = 0; t < StringsTypeCount; ++t) {
        const auto kind = TStringsType(t);
        QCOMPARE(TvxTranslationFileInfo::categoryOf(TvxTranslationFileInfo::sectionName(kind)), t);
        QCOMPARE(TvxTranslationFileInfo::categoryOf(TfrmRTEditor::categoryName(kind).toUpper()), t);
    }
    QCOMPARE(TvxTranslationFileInfo::categoryOf(QStringLiteral("Dialogs")), int(stDlgsCaptions));
    QCOMPARE(TvxTranslationFileInfo::categoryOf(QStringLiteral("other")), int(stOtherStrings));
    QCOMPARE(TvxTranslationFileInfo::categoryOf(QStringLiteral("Nothing")), -1);
    QCOMPARE(TvxTranslationFileInfo::categoryOf(QString()), -1);
}

void TestFileEditor::windowShowsTheFile()
{
    const QString file = sample(QStringLiteral("show.lng"));
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QCOMPARE(window.windowTitle(), QStringLiteral("Vexil Editor - ") + QDir::toNativeSeparators(file));
    QCOMPARE(itemTexts(window.formList()),
             (QStringList{QStringLiteral("Dialog1"), QStringLiteral("TForm1"), QStringLiteral("TForm2")}));
    QCOMPARE(itemTexts(window.categoryList()),
             (QStringList{QStringLiteral("Captions"), QStringLiteral("Hints"), QStringLiteral("Strings")}));
    // Several forms: the user picks one before a grid opens.
    QVERIFY(!window.editor());
    QVERIFY(window.selectForm(QStringLiteral("TForm1")));
    QVERIFY(window.editor());
    QVERIFY(window.editor()->isVisible());
    TvxGridModel *model = grid(window);
    QCOMPARE(model->languageCount(), 3);
    QCOMPARE(model->header(1), QStringLiteral("English"));
    QCOMPARE(model->header(3), QStringLiteral("Language N3"));
    const int button = rowOf(model, QStringLiteral("Button1"));
    QVERIFY(button >= 0);
    QCOMPARE(model->cell(button, 2), QStringLiteral("OK"));
    QVERIFY(rowOf(model, QStringLiteral("TForm1")) >= 0);
    QCOMPARE(model->rowCount(), 2);

    // The form of a Qt class, keyed by its object name, opens as well.
    QVERIFY(window.selectForm(QStringLiteral("Dialog1")));
    QCOMPARE(grid(window)->rowCount(), 1);
    QCOMPARE(grid(window)->key(0), QStringLiteral("QDialog"));

    // Categories the file lacks are offered to start.
    QComboBox *start = window.newCategoryBox();
    QVERIFY(start->isEnabled());
    QCOMPARE(start->count(), 1 + StringsTypeCount - 3);

    window.selectForm(QStringLiteral("TForm1"));
    QCoreApplication::processEvents();
    const QImage shot = window.grab().toImage();
    QVERIFY(!shot.isNull());
    shot.save(QStringLiteral(VEXIL_SCREENSHOT_DIR "/fileeditor.png"));
}

void TestFileEditor::applySavesOnlyThatTable()
{
    const QString file = sample(QStringLiteral("apply.lng"));
    const QStringList before = entries(file);
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QVERIFY(window.selectForm(QStringLiteral("TForm2")));
    QVERIFY(window.selectCategory(stHints));
    QTRY_VERIFY(!window.hasPendingChanges() && window.editor());
    QVERIFY(grid(window)->setCell(0, 2, QStringLiteral("Dein Name")));
    QTRY_VERIFY(window.hasPendingChanges());
    QTest::mouseClick(tool(window.editor(), "sbOK"), Qt::LeftButton);

    QStringList expected = before;
    expected.replace(expected.indexOf(QStringLiteral("[Hints]TForm2.Label1=Your name|Ihr Name|")),
                     QStringLiteral("[Hints]TForm2.Label1=Your name|Dein Name||"));
    // The third language has no name in the file; it gets the one unnamed languages have.
    expected.insert(expected.indexOf(QStringLiteral("[Language names - for internal use only!]Language_2=German")) + 1,
                    QStringLiteral("[Language names - for internal use only!]Language_3=LANGUAGE N3"));
    QStringList after = entries(file);
    after.sort();
    expected.sort();
    QCOMPARE(after, expected);

    // The editor is open again on the table as the file holds it now.
    QVERIFY(window.editor());
    QCOMPARE(grid(window)->cell(0, 2), QStringLiteral("Dein Name"));
    QVERIFY(!window.hasPendingChanges());
}

void TestFileEditor::cancelLeavesTheFileByteIdentical()
{
    const QString file = sample(QStringLiteral("cancel.lng"));
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QVERIFY(window.selectForm(QStringLiteral("TForm1")));
    QVERIFY(window.selectCategory(stStrings));
    QTRY_VERIFY(window.editor());
    const int row = rowOf(grid(window), QStringLiteral("IDS_1"));
    QVERIFY(grid(window)->setCell(row, 1, QStringLiteral("Changed")));
    QTest::mouseClick(tool(window.editor(), "sbCancel"), Qt::LeftButton);
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));
    QVERIFY(window.editor());
    QCOMPARE(grid(window)->cell(rowOf(grid(window), QStringLiteral("IDS_1")), 1), QStringLiteral("Hello"));

    // Closing the window with nothing changed asks nothing and writes nothing.
    QVERIFY(window.close());
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));
}

void TestFileEditor::deletedRowLeavesTheFile()
{
    const QString file = sample(QStringLiteral("delete.lng"));
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QVERIFY(window.selectForm(QStringLiteral("TForm1")));
    QVERIFY(window.selectCategory(stStrings));
    QTRY_VERIFY(window.editor());
    TvxGridModel *model = grid(window);
    QCOMPARE(model->rowCount(), 3);
    // The value without delimiter came in as two equal texts.
    QCOMPARE(model->cell(rowOf(model, QStringLiteral("IDS_3")), 2), QStringLiteral("Plain"));
    window.editor()->grid()->setCurrentIndex(model->index(rowOf(model, QStringLiteral("IDS_2")), 0));
    answer("Yes");
    QTest::mouseClick(tool(window.editor(), "sbDel"), Qt::LeftButton);
    QCOMPARE(model->rowCount(), 2);
    QTest::mouseClick(tool(window.editor(), "sbOK"), Qt::LeftButton);

    TMemIniFile ini(file);
    QStringList keys;
    ini.ReadSection(QStringLiteral("STRINGS"), keys);
    QCOMPARE(keys, (QStringList{QStringLiteral("TForm1.IDS_1"), QStringLiteral("TForm1.IDS_3")}));
    QCOMPARE(ini.ReadString(QStringLiteral("Captions"), QStringLiteral("TForm2.Label1"), QString()),
             QStringLiteral("Name|Name|"));
    // Names the user left alone keep the file's spelling.
    QCOMPARE(ini.ReadString(QStringLiteral("Language names - for internal use only!"), QStringLiteral("Language_1"),
                            QString()),
             QStringLiteral("English"));
}

void TestFileEditor::switchingWithUnappliedChangesAsks()
{
    const QString file = sample(QStringLiteral("switch.lng"));
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QVERIFY(window.selectForm(QStringLiteral("TForm1")));
    QTRY_VERIFY(window.editor());
    QVERIFY(grid(window)->setCell(rowOf(grid(window), QStringLiteral("Button1")), 2, QStringLiteral("Gut")));
    QTRY_VERIFY(window.hasPendingChanges());

    // Cancel: the edit and the selection stay.
    answer("Cancel");
    window.formList()->setCurrentRow(2);
    QCOMPARE(window.currentForm(), QStringLiteral("TForm1"));
    QVERIFY(window.hasPendingChanges());

    // No: the edit goes, the file is untouched.
    answer("No");
    window.formList()->setCurrentRow(2);
    QCOMPARE(window.currentForm(), QStringLiteral("TForm2"));
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));

    // Yes: applied and saved before the next table opens.
    QTRY_VERIFY(window.editor());
    QVERIFY(grid(window)->setCell(0, 1, QStringLiteral("Full name")));
    QTRY_VERIFY(window.hasPendingChanges());
    answer("Yes");
    QVERIFY(window.close());
    QVERIFY(!window.hasFile());
    QCOMPARE(TMemIniFile(file).ReadString(QStringLiteral("Captions"), QStringLiteral("TForm2.Label1"), QString()),
             QStringLiteral("Full name|Name||"));
}

void TestFileEditor::startedCategoryIsWrittenOnApply()
{
    const QString file = sample(QStringLiteral("start.lng"));
    TfrmFileEditor window;
    window.show();
    QVERIFY(window.openFile(file));
    QVERIFY(window.selectForm(QStringLiteral("TForm2")));
    QComboBox *start = window.newCategoryBox();
    const int other = start->findText(QStringLiteral("Other"));
    QVERIFY(other > 0);
    start->activated(other);
    QCOMPARE(window.currentCategory(), int(stOtherStrings));
    QTRY_VERIFY(window.editor());
    QCOMPARE(grid(window)->rowCount(), 0);
    QVERIFY(itemTexts(window.categoryList()).contains(QStringLiteral("Other")));
    // Started but not applied: the file is as it was.
    QTest::mouseClick(tool(window.editor(), "sbCancel"), Qt::LeftButton);
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));

    // Strings of a form that has none yet: a row added and applied.
    QVERIFY(window.selectCategory(stStrings));
    QTRY_VERIFY(window.editor());
    QVERIFY(grid(window)->isBlankRow(0));
    QTest::mouseClick(tool(window.editor(), "sbAdd"), Qt::LeftButton);
    const int added = grid(window)->rowCount() - 1;
    QVERIFY(grid(window)->setCell(added, 0, QStringLiteral("IDS_NEW")));
    QVERIFY(grid(window)->setCell(added, 1, QStringLiteral("New")));
    QTest::mouseClick(tool(window.editor(), "sbOK"), Qt::LeftButton);
    const TMemIniFile ini(file);
    QCOMPARE(ini.ReadString(QStringLiteral("STRINGS"), QStringLiteral("TForm2.IDS_NEW"), QString()),
             QStringLiteral("New|||"));
    QCOMPARE(ini.ReadString(QStringLiteral("STRINGS"), QStringLiteral("TForm1.IDS_2"), QString()),
             QStringLiteral("Bye|Ciao|Adieu|"));
}

void TestFileEditor::badFileKeepsTheOpenOne()
{
    const QString file = sample(QStringLiteral("keep.lng"));
    TfrmFileEditor window;
    QSignalSpy closed(&window, &TfrmFileEditor::fileClosed);
    QVERIFY(window.openFile(file));
    QString error;
    QVERIFY(!window.openFile(path(QStringLiteral("nothing.lng")), &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(window.fileName(), QFileInfo(file).absoluteFilePath());
    QCOMPARE(closed.count(), 0);
    QVERIFY(window.closeFile());
    QCOMPARE(closed.count(), 1);
    QCOMPARE(window.windowTitle(), QStringLiteral("Vexil Editor"));
    QCOMPARE(window.formList()->count(), 0);
}

void TestFileEditor::serviceEditsUntilApplied()
{
    const QString file = sample(QStringLiteral("service.lng"));
    TfrmFileEditor window;
    TvxFileEditorService service(&window);
    QVERIFY(service.EditingFinished());
    service.EditFile(file, QString(), false);
    QVERIFY2(service.lastError().isEmpty(), qPrintable(service.lastError()));
    QVERIFY(!service.EditingFinished());
    QVERIFY(window.isVisible());
    QCOMPARE(window.currentCategory(), int(stCaptions));
    QVERIFY(window.categoryList()->isEnabled());

    // The user picks the form and applies: the edit is over, the window goes.
    QVERIFY(window.selectForm(QStringLiteral("TForm2")));
    QTRY_VERIFY(window.editor());
    QVERIFY(grid(window)->setCell(0, 2, QStringLiteral("Vorname")));
    QVERIFY(!service.EditingFinished());
    QTest::mouseClick(tool(window.editor(), "sbOK"), Qt::LeftButton);
    QVERIFY(service.EditingFinished());
    QVERIFY(window.isHidden());
    QVERIFY(!window.hasFile());
    QCOMPARE(TMemIniFile(file).ReadString(QStringLiteral("Captions"), QStringLiteral("TForm2.Label1"), QString()),
             QStringLiteral("Name|Vorname||"));

    // Closing the window ends an edit as well.
    service.EditFile(file, QStringLiteral("Hints"), false);
    QVERIFY(!service.EditingFinished());
    QVERIFY(window.close());
    QVERIFY(service.EditingFinished());
}

void TestFileEditor::serviceLocksTheCategory()
{
    const QString file = sample(QStringLiteral("locked.lng"));
    TfrmFileEditor window;
    TvxFileEditorService service(&window);
    // A category the file lacks is started, and is the only one offered.
    service.EditFile(file, QStringLiteral("DisplayLabels"), true);
    QVERIFY2(service.lastError().isEmpty(), qPrintable(service.lastError()));
    QCOMPARE(itemTexts(window.categoryList()), QStringList{QStringLiteral("DisplayLabels")});
    QVERIFY(!window.categoryList()->isEnabled());
    QVERIFY(!window.newCategoryBox()->isEnabled());
    QVERIFY(!window.selectCategory(stHints));
    QCOMPARE(window.currentCategory(), int(stDisplayLabels));

    QVERIFY(window.selectForm(QStringLiteral("TForm1")));
    QTRY_VERIFY(window.editor());
    QTest::mouseClick(tool(window.editor(), "sbCancel"), Qt::LeftButton);
    QVERIFY(service.EditingFinished());
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));

    // The next file opened by the user is not locked.
    QVERIFY(window.openFile(file));
    QVERIFY(window.categoryList()->isEnabled());
    QCOMPARE(window.categoryList()->count(), 3);
}

void TestFileEditor::serviceRefusals()
{
    const QString file = sample(QStringLiteral("first.lng"));
    const QString second = sample(QStringLiteral("second.lng"));
    TfrmFileEditor window;
    TvxFileEditorService service(&window);
    service.EditFile(path(QStringLiteral("missing.lng")), QString(), false);
    QVERIFY(service.lastError().contains(QStringLiteral("does not exist")));
    QVERIFY(service.EditingFinished());
    service.EditFile(file, QStringLiteral("Nonsense"), false);
    QVERIFY(service.lastError().contains(QStringLiteral("Nonsense")));
    QVERIFY(service.EditingFinished());

    service.EditFile(file, QStringLiteral("Strings"), false);
    QVERIFY(!service.EditingFinished());
    service.EditFile(second, QString(), false);
    QVERIFY(service.lastError().contains(QStringLiteral("still editing")));
    QCOMPARE(window.fileName(), QFileInfo(file).absoluteFilePath());
    QVERIFY(!service.EditingFinished());
    // The same file again just comes to the front at the category asked.
    service.EditFile(file, QStringLiteral("Hints"), false);
    QVERIFY(service.lastError().isEmpty());
    QCOMPARE(window.currentCategory(), int(stHints));
    QVERIFY(window.closeFile());
    QVERIFY(service.EditingFinished());
}

void TestFileEditor::programAnswersOnTheBus()
{
    if (!QDBusConnection::sessionBus().isConnected())
        QSKIP("no session bus: run under dbus-run-session");
    const QString file = sample(QStringLiteral("bus.lng"));
    Program program;
    QVERIFY(program.ready());
    auto editor = program.iface();
    QVERIFY(finished(*editor));

    QDBusMessage reply = editor->call(QStringLiteral("EditFile"), path(QStringLiteral("missing.lng")), QString(), false);
    QCOMPARE(reply.type(), QDBusMessage::ErrorMessage);
    QCOMPARE(reply.errorName(), QStringLiteral("VXLEditor.VxlEditorIntf.Error.FileError"));
    reply = editor->call(QStringLiteral("EditFile"), file, QStringLiteral("Nonsense"), false);
    QCOMPARE(reply.errorName(), QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    QVERIFY(finished(*editor));

    reply = editor->call(QStringLiteral("EditFile"), file, QStringLiteral("Hints"), true);
    QCOMPARE(reply.type(), QDBusMessage::ReplyMessage);
    QVERIFY(!finished(*editor));
    reply = editor->call(QStringLiteral("EditFile"), sample(QStringLiteral("other.lng")), QString(), false);
    QCOMPARE(reply.errorName(), QStringLiteral("VXLEditor.VxlEditorIntf.Error.Busy"));
    QVERIFY(!finished(*editor));
    QCOMPARE(fileBytes(file), QByteArray(SampleFile));
}

void TestFileEditor::programRefusesATakenName()
{
    if (!QDBusConnection::sessionBus().isConnected())
        QSKIP("no session bus: run under dbus-run-session");
    Program first;
    QVERIFY(first.ready());
    Program second;
    second.process.kill();
    second.process.waitForFinished();
    second.service = first.service;
    second.start({QStringLiteral("--service")});
    QVERIFY(second.process.waitForFinished(60000));
    QCOMPARE(second.process.exitCode(), 2);
    QVERIFY(QString::fromLocal8Bit(second.process.readAllStandardError()).contains(QStringLiteral("already taken")));
    QVERIFY(nameOwned(first.service));
}

void TestFileEditor::activationFileStartsTheProgram()
{
    QSettings service(QStringLiteral(VEXIL_DBUS_SERVICES_DIR "/VXLEditor.VxlEditorIntf.service"),
                      QSettings::IniFormat);
    QCOMPARE(service.value(QStringLiteral("D-BUS Service/Name")).toString(), QStringLiteral("VXLEditor.VxlEditorIntf"));
    QCOMPARE(service.value(QStringLiteral("D-BUS Service/Exec")).toString(),
             QStringLiteral(VEXIL_EDITOR_EXE " --service"));
}

QTEST_MAIN(TestFileEditor)
#include "tst_fileeditor.moc"
