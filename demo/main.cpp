// The Vexil demo: a customer record form and a notes window that switch
// between English, German and French at run time.
//
//   vexil-demo                      run it on screen
//   vexil-demo --screenshots DIR    write one screenshot per language, then exit

#include "mainwindow.h"
#include "secondwindow.h"
#include "vxdispatcher.h"
#include "vxbusservice.h"
#include "vxgridmodel.h"
#include "vxrteditor.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QTableView>
#include <QtWidgets/QToolButton>

#include <cstdio>
#include <memory>

namespace {

QString translationFile()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("vexil-demo.lng"));
}

// A window's picture under a plain title bar showing its caption.
QPixmap framed(QWidget *window)
{
    const QPixmap content = window->grab();
    const int bar = window->fontMetrics().height() + 10;
    QPixmap pixmap(content.width() + 2, content.height() + bar + 1);
    pixmap.fill(QColor(70, 90, 120));
    QPainter painter(&pixmap);
    painter.setPen(Qt::white);
    QFont font = window->font();
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRect(8, 0, content.width() - 16, bar), Qt::AlignVCenter | Qt::AlignLeft, window->windowTitle());
    painter.drawPixmap(1, bar, content);
    return pixmap;
}

// The main window, the notes window and the exit confirmation on one picture.
QImage snapshot(MainWindow &main)
{
    const QPixmap left = framed(&main);
    const QPixmap right = framed(main.secondWindow());
    std::unique_ptr<QDialog> confirmation(main.createExitConfirmation());
    confirmation->show();
    const QPixmap box = framed(confirmation.get());
    confirmation->hide();
    const int gap = 16;
    QImage image(left.width() + gap + qMax(right.width(), box.width()),
                 qMax(left.height(), right.height() + gap + box.height()), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, left);
    painter.drawPixmap(left.width() + gap, 0, right);
    painter.drawPixmap(left.width() + gap, right.height() + gap, box);
    return image;
}

// With the dictionary manager on the bus: the editor hands all its pairs to
// the dictionary, forgets some French texts, and Auto-translate brings them
// back from the dictionary.
int dictionaryScreenshot(MainWindow &main, const QString &dir, const QStringList &names)
{
    if (!Vexil::busServiceAvailable(Vexil::dictionaryServiceName())) {
        std::fprintf(stderr, "no dictionary manager on the session bus: no dictionary screenshot\n");
        return 0;
    }
    TfrmRTEditor editor(main.vexil(), stCaptions, main.vexil()->Captions());
    editor.show();
    QCoreApplication::processEvents();
    for (int c = 1; c <= names.size() && c < editor.model()->columnCount(); ++c)
        editor.model()->setHeader(c, names.at(c - 1));
    editor.findChild<QToolButton *>(QStringLiteral("sbDictAddAll"))->click();
    const QStringList forgotten{QStringLiteral("btnApply"), QStringLiteral("btnClose"), QStringLiteral("menuFile"),
                                QStringLiteral("actionExit")};
    for (const QString &key : forgotten)
        editor.model()->setCell(editor.model()->findKey(key), 3, QString());
    editor.findChild<QToolButton *>(QStringLiteral("sbDictAuto"))->click();
    editor.grid()->setCurrentIndex(editor.model()->index(std::max(editor.model()->findKey(forgotten.first()), 0), 3));
    QCoreApplication::processEvents();
    const QString file = QDir(dir).absoluteFilePath(QStringLiteral("vexil-demo-editor-autotranslated.png"));
    if (!framed(&editor).save(file)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(file));
    editor.BitBtn2Click();
    return 0;
}

int writeScreenshots(MainWindow &main, const QString &dir)
{
    if (!QDir().mkpath(dir)) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(dir));
        return 1;
    }
    main.setConfirmExit(false);
    main.show();
    main.secondWindow()->show();
    const QStringList names = main.dispatcher()->LangNames()->lines();
    for (int i = 1; i <= names.size(); ++i) {
        main.setLanguage(i);
        QCoreApplication::processEvents();
        const QString file = QDir(dir).absoluteFilePath(
            QStringLiteral("vexil-demo-%1-%2.png").arg(i).arg(names.at(i - 1).toLower()));
        if (!snapshot(main).save(file)) {
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
            return 1;
        }
        std::printf("%s\n", qPrintable(file));
    }

    // The end user's translation editor on the main window's captions, in German.
    main.setLanguage(2);
    main.vexil()->BuildList();
    TfrmRTEditor editor(main.vexil(), stCaptions, main.vexil()->Captions());
    editor.show();
    QCoreApplication::processEvents();
    const int row = editor.model()->findKey(QStringLiteral("btnApply"));
    editor.grid()->setCurrentIndex(editor.model()->index(std::max(row, 0), 2));
    QCoreApplication::processEvents();
    const QString file = QDir(dir).absoluteFilePath(QStringLiteral("vexil-demo-editor-%1.png").arg(names.value(1).toLower()));
    if (!framed(&editor).save(file)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
        return 1;
    }
    std::printf("%s\n", qPrintable(file));
    editor.BitBtn2Click();
    return dictionaryScreenshot(main, dir, names);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Vexil"));
    QApplication::setApplicationName(QStringLiteral("vexil-demo"));

    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption shots(QStringLiteral("screenshots"),
                             QStringLiteral("Write one screenshot per language into <dir>, then exit."),
                             QStringLiteral("dir"));
    parser.addOption(shots);
    parser.process(app);

    MainWindow window(translationFile());
    if (parser.isSet(shots))
        return writeScreenshots(window, parser.value(shots));
    window.show();
    return app.exec();
}
