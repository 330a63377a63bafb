// Fuzz target: loading and merging translation files into a component on a
// real form, then switching languages and saving.
#include "vxcomp.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTreeWidget>

#include <cstdint>
#include <cstdlib>

namespace {

class FuzzForm : public QWidget
{
    Q_OBJECT
public:
    FuzzForm()
    {
        setObjectName(QStringLiteral("FuzzForm"));
        auto *button = new QPushButton(QStringLiteral("OK"), this);
        button->setObjectName(QStringLiteral("Button1"));
        auto *label = new QLabel(QStringLiteral("Name"), this);
        label->setObjectName(QStringLiteral("Label1"));
        auto *combo = new QComboBox(this);
        combo->setObjectName(QStringLiteral("Combo1"));
        combo->addItems({QStringLiteral("a"), QStringLiteral("b")});
        auto *tree = new QTreeWidget(this);
        tree->setObjectName(QStringLiteral("Tree1"));
        tree->setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Size")});
        auto *tabs = new QTabWidget(this);
        tabs->setObjectName(QStringLiteral("Tabs1"));
        tabs->addTab(new QWidget, QStringLiteral("General"));
        vx = new TVexil(this);
        vx->Loaded();
        vx->SetNumLang(3);
        vx->BuildList();
    }
    TVexil *vx;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication app(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("input.lng"));
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        f.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    try {
        FuzzForm form;
        TVexil *vx = form.vx;
        vx->LoadAllFromFile(file, false);
        vx->MergeFromFile(stCollections, file);
        vx->MergeAllFromFileDNC(file);
        vx->LoadFromFile(stMultiLines, file, true);
        vx->SetTranslateType(TvxCustomLang::ttGetDefault);
        for (int lang : {2, 3, 1})
            vx->SetActLang(lang);
        vx->GetText(QStringLiteral("IDS_1"));
        vx->SaveAllToFile(dir.filePath(QStringLiteral("output.lng")), QLatin1Char('|'));
        FuzzForm reader;
        reader.vx->LoadAllFromFile(dir.filePath(QStringLiteral("output.lng")), true);
    } catch (const std::exception &) {
        // Errors are allowed to surface as exceptions from the public
        // setters; crashes are not.
    }
    return 0;
}

#include "fuzz_langfile.moc"
