// The Vexil demo: a customer record form and a notes window that switch
// between English, German and French at run time.
//
//   vexil-demo                      run it on screen
//   vexil-demo --screenshots DIR    write one screenshot per language, then exit

#include "mainwindow.h"
#include "secondwindow.h"
#include "vxdispatcher.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {

QString translationFile()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("vexil-demo.lng"));
}

// Both windows side by side on one picture.
QImage snapshot(MainWindow &main)
{
    const QPixmap left = main.grab();
    const QPixmap right = main.secondWindow()->grab();
    QImage image(left.width() + right.width() + 16, qMax(left.height(), right.height()), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, left);
    painter.drawPixmap(left.width() + 16, 0, right);
    return image;
}

int writeScreenshots(MainWindow &main, const QString &dir)
{
    if (!QDir().mkpath(dir)) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(dir));
        return 1;
    }
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
    return 0;
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
