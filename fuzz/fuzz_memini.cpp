// Fuzz target: the INI store's reading, parsing, look-ups and writing.
#include "memini.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("input.ini"));
    {
        QFile f(file);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            return 0;
        f.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    try {
        TMemIniFile ini(file);
        QStringList sections;
        ini.ReadSections(sections);
        for (const QString &section : std::as_const(sections)) {
            QStringList names;
            ini.ReadSection(section, names);
            for (const QString &name : std::as_const(names)) {
                ini.ReadString(section, name, QString());
                ini.ReadInteger(section, name, 0);
            }
            ini.SectionExists(section);
        }
        QStringList text;
        ini.GetStrings(text);
        ini.SetStrings(text);
        ini.WriteString(QStringLiteral("Fuzz"), QStringLiteral("Key"), QStringLiteral("Value"));
        if (!sections.isEmpty()) {
            ini.DeleteKey(sections.first(), QStringLiteral("Key"));
            ini.EraseSection(sections.last());
        }
        ini.Rename(dir.filePath(QStringLiteral("output.ini")), false);
        ini.UpdateFile();
        TMemIniFile again(dir.filePath(QStringLiteral("output.ini")));
    } catch (const std::exception &) {
        // Reading or writing may fail with an error; it must not crash.
    }
    return 0;
}
