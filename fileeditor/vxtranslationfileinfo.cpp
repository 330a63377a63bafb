#include "vxtranslationfileinfo.h"

#include "memini.h"
#include "vxrteditor.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

#include <algorithm>
#include <exception>

namespace {

const QString LangNameSection = QStringLiteral("Language names - for internal use only!");

// How many languages a file value carries: one text per delimiter (the
// last one closed by it or not); a value without any delimiter is given to
// the first two languages when it is loaded.
int fieldCount(const QString &value, QChar delim)
{
    const int delims = int(value.count(delim));
    if (delims == 0)
        return 2;
    return value.endsWith(delim) ? delims : delims + 1;
}

} // namespace

int TvxTranslationFileInfo::categoryOf(const QString &name)
{
    for (int t = 0; t < StringsTypeCount; ++t) {
        const auto kind = TStringsType(t);
        if (name.compare(QLatin1String(Vexil::IniNames[t]), Qt::CaseInsensitive) == 0
            || name.compare(QLatin1String(Vexil::CategoryTableNames[t]), Qt::CaseInsensitive) == 0
            || name.compare(TfrmRTEditor::categoryName(kind), Qt::CaseInsensitive) == 0)
            return t;
    }
    return -1;
}

QString TvxTranslationFileInfo::sectionName(TStringsType kind)
{
    return kind >= 0 && kind < StringsTypeCount ? QString::fromLatin1(Vexil::IniNames[kind]) : QString();
}

bool TvxTranslationFileInfo::read(const QString &name, QString *error)
{
    const QFileInfo file(name);
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    if (!file.exists())
        return fail(QStringLiteral("The file \"%1\" does not exist.").arg(name));
    if (!file.isFile() || !file.isReadable())
        return fail(QStringLiteral("The file \"%1\" cannot be read.").arg(name));

    TvxTranslationFileInfo info;
    info.fileName = file.absoluteFilePath();
    try {
        const TMemIniFile ini(name);
        const QString delim = ini.ReadString(QStringLiteral("OPTIONS"), QStringLiteral("DELIMITER"), QString());
        if (!delim.isEmpty())
            info.delimiter = delim.at(0);
        for (int i = 1;; ++i) {
            const QString lang =
                ini.ReadString(LangNameSection, QStringLiteral("Language_") + QString::number(i), QString());
            if (lang.isEmpty())
                break;
            info.languageNames << lang;
        }

        QStringList sections;
        ini.ReadSections(sections);
        QSet<int> present;
        QSet<QString> seen;
        int fields = 0;
        QStringList lines;
        for (const QString &section : std::as_const(sections)) {
            const int kind = categoryOf(section);
            // Only the section words name categories in a file.
            if (kind < 0 || section.compare(QLatin1String(Vexil::IniNames[kind]), Qt::CaseInsensitive) != 0)
                continue;
            ini.ReadSectionValues(section, lines);
            bool any = false;
            for (const QString &line : std::as_const(lines)) {
                const int eq = line.indexOf(QLatin1Char('='));
                const QString key = eq >= 0 ? line.left(eq) : line;
                const int dot = key.indexOf(QLatin1Char('.'));
                if (dot <= 0)
                    continue; // no form to file it under
                any = true;
                const QString form = key.left(dot);
                if (!seen.contains(form)) {
                    seen.insert(form);
                    info.forms << form;
                }
                if (eq >= 0)
                    fields = std::max(fields, fieldCount(line.mid(eq + 1), info.delimiter));
            }
            if (any || !lines.isEmpty())
                present.insert(kind);
        }
        std::sort(info.forms.begin(), info.forms.end(), [](const QString &a, const QString &b) {
            const int c = a.compare(b, Qt::CaseInsensitive);
            return c != 0 ? c < 0 : a < b;
        });
        for (int t = 0; t < StringsTypeCount; ++t) {
            if (present.contains(t))
                info.categories << TStringsType(t);
        }
        info.languageCount = std::max({1, int(info.languageNames.size()), fields});
    } catch (const std::exception &e) {
        return fail(QStringLiteral("The file \"%1\" cannot be read: %2").arg(name, QString::fromLocal8Bit(e.what())));
    }
    *this = info;
    return true;
}
