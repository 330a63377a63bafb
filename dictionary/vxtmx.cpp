#include "vxtmx.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QLocale>
#include <QtCore/QSaveFile>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>
#include <QtCore/QXmlStreamWriter>

namespace Vexil {

namespace {

// Qt's language names, case-folded, to their languages.
const QHash<QString, QLocale::Language> &knownLanguageNames()
{
    static const QHash<QString, QLocale::Language> names = [] {
        QHash<QString, QLocale::Language> map;
        for (int l = QLocale::C + 1; l <= QLocale::LastLanguage; ++l) {
            const auto language = static_cast<QLocale::Language>(l);
            const QString name = QLocale::languageToString(language);
            if (!name.isEmpty() && !QLocale::languageToCode(language).isEmpty())
                map.insert(name.toCaseFolded(), language);
        }
        return map;
    }();
    return names;
}

QLocale::Language languageOfName(const QString &name)
{
    return knownLanguageNames().value(name.toCaseFolded(), QLocale::AnyLanguage);
}

QString lineError(const QXmlStreamReader &reader)
{
    return QStringLiteral("line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
}

// Inline markup whose content is native code of the original document,
// not text of the segment.
bool isCodeElement(QStringView name)
{
    return name == u"bpt" || name == u"ept" || name == u"it" || name == u"ph" || name == u"ut"
        || name == u"sub";
}

// Reads the text of the <seg> the reader stands on, up to its end tag.
QString readSegment(QXmlStreamReader &reader)
{
    QString text;
    int codeDepth = 0;
    int depth = 1;
    while (depth > 0 && !reader.atEnd()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            if (codeDepth || isCodeElement(reader.name()))
                ++codeDepth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            if (codeDepth)
                --codeDepth;
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            if (!codeDepth)
                text += reader.text();
            break;
        default:
            break;
        }
        if (text.size() > TvxDictionaryStore::MaxTextLength) {
            reader.raiseError(QStringLiteral("a text is longer than %1 characters")
                                  .arg(TvxDictionaryStore::MaxTextLength));
            break;
        }
    }
    return text;
}

// Reads the <tu> the reader stands on.
TvxDictionaryStore::Segments readUnit(QXmlStreamReader &reader)
{
    TvxDictionaryStore::Segments unit;
    while (reader.readNextStartElement()) {
        if (reader.name() != u"tuv") {
            reader.skipCurrentElement();
            continue;
        }
        const QXmlStreamAttributes attributes = reader.attributes();
        QString lang = attributes.value(QLatin1String("xml:lang")).toString();
        if (lang.isEmpty())
            lang = attributes.value(QLatin1String("lang")).toString();  // TMX 1.1
        if (lang.trimmed().isEmpty()) {
            reader.raiseError(QStringLiteral("a <tuv> has no xml:lang"));
            return {};
        }
        QString text;
        bool hasSegment = false;
        while (reader.readNextStartElement()) {
            if (reader.name() == u"seg" && !hasSegment) {
                text = readSegment(reader);
                hasSegment = true;
            } else {
                reader.skipCurrentElement();
            }
        }
        if (reader.hasError())
            return {};
        if (!text.isEmpty())
            unit.append({lang.trimmed(), text});
    }
    return unit;
}

} // namespace

QString tmxLanguageCode(const QString &name)
{
    const QLocale::Language language = languageOfName(name);
    if (language == QLocale::AnyLanguage)
        return name;
    return QLocale::languageToCode(language);
}

QString languageForTmxCode(const QStringList &languages, const QString &code, const QStringList &fileCodes)
{
    for (const QString &name : languages) {
        if (name.compare(code, Qt::CaseInsensitive) == 0)
            return name;
    }
    const QLocale::Language language = QLocale::codeToLanguage(code);
    if (language != QLocale::AnyLanguage && language != QLocale::C) {
        for (const QString &name : languages) {
            if (languageOfName(name) == language && !fileCodes.contains(name, Qt::CaseInsensitive))
                return name;
        }
    }
    return code;
}

bool readTmx(QIODevice *device, QVector<TvxDictionaryStore::Segments> *units, QString *error)
{
    units->clear();
    QXmlStreamReader reader(device);
    if (!reader.readNextStartElement()) {
        if (!reader.hasError())
            reader.raiseError(QStringLiteral("the document is empty"));
    } else if (reader.name() != u"tmx") {
        reader.raiseError(QStringLiteral("the document is not TMX (its root is <%1>)")
                              .arg(reader.name().toString()));
    } else {
        bool sawBody = false;
        while (!reader.hasError() && reader.readNextStartElement()) {
            if (reader.name() != u"body") {
                reader.skipCurrentElement();
                continue;
            }
            sawBody = true;
            while (!reader.hasError() && reader.readNextStartElement()) {
                if (reader.name() != u"tu") {
                    reader.skipCurrentElement();
                    continue;
                }
                TvxDictionaryStore::Segments unit = readUnit(reader);
                if (unit.size() >= 2)
                    units->append(std::move(unit));
            }
        }
        // Whatever follows the root must still be well-formed.
        while (!reader.hasError() && !reader.atEnd())
            reader.readNext();
        if (!reader.hasError() && !sawBody)
            reader.raiseError(QStringLiteral("the document has no <body>"));
    }
    if (reader.hasError()) {
        units->clear();
        if (error)
            *error = lineError(reader);
        return false;
    }
    return true;
}

bool writeTmx(QIODevice *device, const QStringList &languages,
              const QVector<TvxDictionaryStore::Unit> &units)
{
    // Each language gets its code; when two would share one (a "German"
    // beside a "de"), those not named by the code keep their own name, so
    // reading the file back does not merge them.
    QStringList codes;
    QHash<QString, int> uses;
    for (const QString &name : languages) {
        codes.append(tmxLanguageCode(name));
        uses[codes.last().toCaseFolded()] += 1;
    }
    for (int i = 0; i < languages.size(); ++i) {
        if (uses.value(codes.at(i).toCaseFolded()) > 1
            && codes.at(i).compare(languages.at(i), Qt::CaseInsensitive) != 0)
            codes[i] = languages.at(i);
    }

    QXmlStreamWriter writer(device);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    writer.writeDTD(QStringLiteral("<!DOCTYPE tmx SYSTEM \"tmx14.dtd\">"));
    writer.writeStartElement(QStringLiteral("tmx"));
    writer.writeAttribute(QStringLiteral("version"), QStringLiteral("1.4"));
    writer.writeEmptyElement(QStringLiteral("header"));
    writer.writeAttribute(QStringLiteral("creationtool"), QStringLiteral("vexil-dictionary"));
    writer.writeAttribute(QStringLiteral("creationtoolversion"), QStringLiteral(VEXIL_VERSION));
    writer.writeAttribute(QStringLiteral("segtype"), QStringLiteral("sentence"));
    writer.writeAttribute(QStringLiteral("o-tmf"), QStringLiteral("vexil-dictionary"));
    writer.writeAttribute(QStringLiteral("adminlang"), QStringLiteral("en"));
    writer.writeAttribute(QStringLiteral("srclang"), QStringLiteral("*all*"));
    writer.writeAttribute(QStringLiteral("datatype"), QStringLiteral("plaintext"));
    writer.writeStartElement(QStringLiteral("body"));
    for (const TvxDictionaryStore::Unit &unit : units) {
        writer.writeStartElement(QStringLiteral("tu"));
        for (int i = 0; i < unit.texts.size() && i < codes.size(); ++i) {
            if (unit.texts.at(i).isEmpty())
                continue;
            writer.writeStartElement(QStringLiteral("tuv"));
            writer.writeAttribute(QStringLiteral("xml:lang"), codes.at(i));
            writer.writeTextElement(QStringLiteral("seg"), unit.texts.at(i));
            writer.writeEndElement();
        }
        writer.writeEndElement();
    }
    writer.writeEndElement();
    writer.writeEndElement();
    writer.writeEndDocument();
    return !writer.hasError();
}

int importTmx(TvxDictionaryStore &store, const QString &fileName, QString *error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("Cannot read the file \"%1\": %2.").arg(fileName, file.errorString());
        return -1;
    }
    QVector<TvxDictionaryStore::Segments> units;
    QString parseError;
    if (!readTmx(&file, &units, &parseError)) {
        if (error)
            *error = QStringLiteral("The file \"%1\" is not a valid TMX document (%2). Nothing was imported.")
                         .arg(fileName, parseError);
        return -1;
    }
    // Codes become the dictionary's languages; languages met first in this
    // file count as known for the rest of it.
    QStringList fileCodes;
    for (const auto &unit : units) {
        for (const auto &segment : unit) {
            if (!fileCodes.contains(segment.first, Qt::CaseInsensitive))
                fileCodes.append(segment.first);
        }
    }
    QStringList languages = store.languages();
    QHash<QString, QString> resolved;
    for (auto &unit : units) {
        for (auto &segment : unit) {
            auto found = resolved.constFind(segment.first);
            if (found == resolved.constEnd()) {
                const QString name = languageForTmxCode(languages, segment.first, fileCodes);
                if (!languages.contains(name, Qt::CaseInsensitive))
                    languages.append(name);
                found = resolved.insert(segment.first, name);
            }
            segment.first = *found;
        }
    }
    try {
        return store.importUnits(units);
    } catch (const EDictionaryError &e) {
        if (error)
            *error = QStringLiteral("The file \"%1\" was not imported: %2").arg(fileName, e.message());
        return -1;
    }
}

bool exportTmx(const TvxDictionaryStore &store, const QString &fileName, QString *error)
{
    QVector<TvxDictionaryStore::Unit> units;
    try {
        units = store.units();
    } catch (const EDictionaryError &e) {
        if (error)
            *error = e.message();
        return false;
    }
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        if (error)
            *error = QStringLiteral("Cannot write the file \"%1\": %2.").arg(fileName, file.errorString());
        return false;
    }
    if (!writeTmx(&file, store.languages(), units) || !file.commit()) {
        if (error)
            *error = QStringLiteral("Cannot write the file \"%1\": %2.").arg(fileName, file.errorString());
        return false;
    }
    return true;
}

} // namespace Vexil
