// Measures the translation engine against Qt's own translation path on the
// same synthetic forms and prints its figures last, one per line as
// "name: value". Times are medians of several repetitions, in milliseconds.
//
//   vexil-bench [--quick]

#include "vxcomp.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTranslator>
#include <QtGui/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace {

const char *const context = "BenchForm";

QString englishText(int i) { return QStringLiteral("Text number %1").arg(i); }
QString translatedText(int lang, int i) { return QStringLiteral("L%1 text number %2").arg(lang).arg(i); }

double median(std::vector<double> v)
{
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

double timeMs(const std::function<void()> &f)
{
    QElapsedTimer t;
    t.start();
    f();
    return t.nsecsElapsed() / 1e6;
}

/// A form of @p n widgets: buttons, labels and actions with tool tips.
class BenchForm : public QWidget
{
public:
    explicit BenchForm(int n)
    {
        for (int i = 0; i < n; ++i) {
            QObject *o;
            switch (i % 3) {
            case 0: {
                auto *b = new QPushButton(englishText(i), this);
                b->setToolTip(englishText(i));
                o = b;
                break;
            }
            case 1:
                o = new QLabel(englishText(i), this);
                break;
            default: {
                auto *a = new QAction(englishText(i), this);
                a->setToolTip(englishText(i));
                o = a;
                break;
            }
            }
            o->setObjectName(QStringLiteral("c%1").arg(i));
            objects.push_back(o);
        }
    }

    // What uic's retranslateUi() does: every text again through tr.
    void retranslate()
    {
        for (size_t i = 0; i < objects.size(); ++i) {
            const QByteArray source = englishText(int(i)).toUtf8();
            const QString text = QCoreApplication::translate(context, source.constData());
            if (auto *b = qobject_cast<QPushButton *>(objects[i])) {
                b->setText(text);
                b->setToolTip(text);
            } else if (auto *l = qobject_cast<QLabel *>(objects[i])) {
                l->setText(text);
            } else if (auto *a = qobject_cast<QAction *>(objects[i])) {
                a->setText(text);
                a->setToolTip(text);
            }
        }
    }

    std::vector<QObject *> objects;
};

// Gives every caption and hint line of @p vx texts for languages 2 and 3.
void fillTranslations(TVexil &vx)
{
    for (TvxStringList *list : {vx.Captions(), vx.Hints()}) {
        QStringList lines = list->lines();
        for (QString &line : lines) {
            const QString key = line.section(QLatin1Char('\t'), 0, 0);
            const QString text = line.section(QLatin1Char('\t'), 1, 1);
            const int i = text.section(QLatin1Char(' '), 2, 2).toInt();
            line = key + QLatin1Char('\t') + text + QLatin1Char('\t') + translatedText(2, i) + QLatin1Char('\t')
                + translatedText(3, i) + QLatin1Char('\t');
        }
        list->setLines(lines);
    }
}

QString lreleasePath()
{
#ifdef VEXIL_LRELEASE
    return QStringLiteral(VEXIL_LRELEASE);
#else
    return QStringLiteral("lrelease");
#endif
}

// Writes a .ts for language @p lang with @p n messages and compiles it.
QString makeQm(const QDir &dir, int lang, int n, const std::function<QString(int)> &source,
               const std::function<QString(int)> &translation)
{
    const QString ts = dir.filePath(QStringLiteral("bench_%1_%2.ts").arg(lang).arg(n));
    QFile f(ts);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        qFatal("cannot write %s", qPrintable(ts));
    QString xml = QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
                                 "<TS version=\"2.1\" language=\"de\">\n<context>\n<name>%1</name>\n")
                      .arg(QLatin1String(context));
    for (int i = 0; i < n; ++i) {
        xml += QStringLiteral("<message><source>%1</source><translation>%2</translation></message>\n")
                   .arg(source(i).toHtmlEscaped(), translation(i).toHtmlEscaped());
    }
    xml += QStringLiteral("</context>\n</TS>\n");
    f.write(xml.toUtf8());
    f.close();
    const QString qm = dir.filePath(QStringLiteral("bench_%1_%2.qm").arg(lang).arg(n));
    QProcess p;
    p.start(lreleasePath(), {QStringLiteral("-silent"), ts, QStringLiteral("-qm"), qm});
    if (!p.waitForFinished(120000) || p.exitCode() != 0)
        qFatal("lrelease failed: %s", p.readAllStandardError().constData());
    return qm;
}

struct Figures
{
    QList<QPair<QString, QString>> lines;
    void add(const QString &name, double value) { lines.append({name, QString::number(value, 'f', 3)}); }
};

void benchSwitch(Figures &out, const QDir &dir, int n, int reps)
{
    BenchForm form(n);
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(3);
    vx.BuildList();
    fillTranslations(vx);

    // Every switch must really have written the texts: checked outside the timing.
    auto check = [&form](int lang) {
        for (size_t i = 0; i < form.objects.size(); i += 97) {
            const QString expected = lang == 1 ? englishText(int(i)) : translatedText(lang, int(i));
            if (form.objects[i]->property("text").toString() != expected)
                qFatal("switch to language %d left %s", lang, qPrintable(form.objects[i]->objectName()));
        }
    };
    std::vector<double> ours;
    for (int r = 0; r < reps; ++r) {
        ours.push_back(timeMs([&] { vx.SetActLang(2); }));
        check(2);
        ours.push_back(timeMs([&] { vx.SetActLang(3); }));
        check(3);
        vx.SetActLang(1);
        check(1);
    }

    // Qt's path on a twin form: load the language's .qm, install it, retranslate.
    BenchForm twin(n);
    QTranslator tr2, tr3;
    const QString qm2 = makeQm(dir, 2, n, englishText, [](int i) { return translatedText(2, i); });
    const QString qm3 = makeQm(dir, 3, n, englishText, [](int i) { return translatedText(3, i); });
    if (!tr2.load(qm2) || !tr3.load(qm3))
        qFatal("cannot load the .qm files");
    std::vector<double> qt;
    for (int r = 0; r < reps; ++r) {
        for (QTranslator *t : {&tr2, &tr3}) {
            qt.push_back(timeMs([&] {
                QCoreApplication::installTranslator(t);
                twin.retranslate();
            }));
            if (twin.objects[3]->property("text").toString() != translatedText(t == &tr2 ? 2 : 3, 3))
                qFatal("the translator did not translate");
            QCoreApplication::removeTranslator(t);
        }
    }
    const double o = median(ours), q = median(qt);
    out.add(QStringLiteral("switch_%1_ms").arg(n), o);
    out.add(QStringLiteral("switch_qt_%1_ms").arg(n), q);
    out.add(QStringLiteral("switch_vs_qt"), o / q);
}

void benchGetText(Figures &out, const QDir &dir, const QList<int> &sizes, int reps)
{
    double ratioAtLargest = 0;
    for (int n : sizes) {
        TVexil vx;
        vx.SetNumLang(3);
        QStringList lines;
        lines.reserve(n);
        for (int i = 0; i < n; ++i)
            lines << QStringLiteral("IDS_%1\t%2\t%3\t%4\t").arg(i).arg(englishText(i), translatedText(2, i), translatedText(3, i));
        vx.Strings()->setLines(lines);
        vx.SetActLang(2);

        std::vector<int> order(n);
        for (int i = 0; i < n; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), std::mt19937(42));
        QStringList ids;
        std::vector<QByteArray> sources;
        for (int i : order) {
            ids << QStringLiteral("IDS_%1").arg(i);
            sources.push_back(englishText(i).toUtf8());
        }

        QTranslator tr;
        if (!tr.load(makeQm(dir, 2, n, englishText, [](int i) { return translatedText(2, i); })))
            qFatal("cannot load the .qm file");

        vx.GetText(ids.first()); // the index is built on first use, as in any program
        std::vector<double> ours, qt;
        qsizetype sink = 0;
        for (int r = 0; r < reps; ++r) {
            ours.push_back(timeMs([&] {
                for (const QString &id : std::as_const(ids))
                    sink += vx.GetText(id).size();
            }));
            qt.push_back(timeMs([&] {
                for (const QByteArray &s : sources)
                    sink += tr.translate(context, s.constData()).size();
            }));
        }
        if (sink == 42)
            std::puts("");
        const double o = median(ours), q = median(qt);
        out.add(QStringLiteral("gettext_%1_ms").arg(n), o);
        out.add(QStringLiteral("gettext_qt_%1_ms").arg(n), q);
        ratioAtLargest = o / q;
    }
    out.add(QStringLiteral("gettext_vs_qt"), ratioAtLargest);
}

double buildListMs(int n, int reps)
{
    std::vector<double> t;
    for (int r = -1; r < reps; ++r) { // round -1 warms up and is not counted
        BenchForm form(n);
        TVexil vx(&form);
        vx.Loaded();
        vx.SetNumLang(3);
        const double ms = timeMs([&] { vx.BuildList(); });
        if (r >= 0)
            t.push_back(ms);
    }
    return median(t);
}

void benchFiles(Figures &out, const QDir &dir, int n, int reps, double *loadMs)
{
    const QString file = dir.filePath(QStringLiteral("bench_%1.lng").arg(n));
    QWidget form;
    TVexil vx(&form);
    vx.Loaded();
    vx.SetNumLang(3);
    QStringList lines;
    for (int i = 0; i < n; ++i)
        lines << QStringLiteral("IDS_%1\t%2\t%3\t%4\t").arg(i).arg(englishText(i), translatedText(2, i), translatedText(3, i));
    vx.Strings()->setLines(lines);

    std::vector<double> save, load;
    for (int r = -1; r < reps; ++r) { // round -1 warms the allocator up and is not counted
        QFile::remove(file);
        save.push_back(timeMs([&] { vx.SaveAllToFile(file, QLatin1Char('|')); }));
        QWidget other;
        TVexil reader(&other);
        reader.Loaded();
        reader.SetNumLang(3);
        load.push_back(timeMs([&] { reader.LoadAllFromFile(file, true); }));
        if (reader.Strings()->count() != n)
            qFatal("loaded %d of %d entries", int(reader.Strings()->count()), n);
        if (r < 0) {
            save.clear();
            load.clear();
        }
    }
    out.add(QStringLiteral("save_%1_ms").arg(n), median(save));
    out.add(QStringLiteral("load_%1_ms").arg(n), median(load));
    *loadMs = median(load);
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("Fewer repetitions."));
    QCommandLineOption only(QStringLiteral("only"),
                            QStringLiteral("Run one group: switch, gettext, buildlist or files (for profiling)."),
                            QStringLiteral("group"));
    parser.addOption(quick);
    parser.addOption(only);
    parser.process(app);
    const int reps = parser.isSet(quick) ? 3 : 9;

    QTemporaryDir tmp;
    const QDir dir(tmp.path());
    Figures out;

    const QString group = parser.value(only);
    auto wanted = [&group](const char *name) { return group.isEmpty() || group == QLatin1String(name); };

    if (wanted("switch"))
        benchSwitch(out, dir, 1000, reps);
    if (wanted("gettext"))
        benchGetText(out, dir, {1000, 10000, 100000}, reps);
    if (wanted("buildlist")) {
        const double b1 = buildListMs(1000, reps);
        const double b2 = buildListMs(2000, reps);
        out.add(QStringLiteral("buildlist_1000_ms"), b1);
        out.add(QStringLiteral("buildlist_2000_ms"), b2);
        out.add(QStringLiteral("buildlist_scaling"), b2 / b1);
    }
    if (wanted("files")) {
        double l1 = 0, l2 = 0;
        benchFiles(out, dir, 50000, reps, &l1);
        benchFiles(out, dir, 100000, reps, &l2);
        out.add(QStringLiteral("load_scaling"), l2 / l1);
    }

    for (const auto &line : std::as_const(out.lines))
        std::printf("%s: %s\n", qPrintable(line.first), qPrintable(line.second));
    return 0;
}
