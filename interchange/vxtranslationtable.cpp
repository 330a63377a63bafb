#include "vxtranslationtable.h"

#include "memini.h"
#include "vxerrors.h"
#include "vxfileformat.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>

namespace Vexil::Interchange {

namespace FF = Vexil::FileFormat;

QString TvxEntry::form() const
{
    const qsizetype dot = key.indexOf(QLatin1Char('.'));
    return dot < 0 ? key : key.left(dot);
}

QString TvxEntry::name() const
{
    const qsizetype dot = key.indexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : key.mid(dot + 1);
}

TvxTranslationTable::TvxTranslationTable() = default;
TvxTranslationTable::~TvxTranslationTable() = default;

QString TvxTranslationTable::sectionName(TStringsType category)
{
    return QLatin1String(Vexil::IniNames[category]);
}

int TvxTranslationTable::categoryOf(const QString &name)
{
    for (int i = 0; i < StringsTypeCount; ++i) {
        if (name.compare(QLatin1String(Vexil::IniNames[i]), Qt::CaseInsensitive) == 0
            || name.compare(QLatin1String(Vexil::CategoryTableNames[i]), Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QStringList TvxTranslationTable::splitValue(const QString &value, QChar delim, bool *closed)
{
    QStringList texts;
    if (!value.contains(delim)) {
        // A single text stands for the first two languages.
        const QString text = FF::decodeText(value, delim);
        texts << text << text;
        if (closed)
            *closed = false;
        return texts;
    }
    qsizetype from = 0;
    for (;;) {
        const qsizetype at = value.indexOf(delim, from);
        if (at < 0) {
            const bool isClosed = from == value.size();
            if (!isClosed)
                texts << FF::decodeText(value.mid(from), delim);
            if (closed)
                *closed = isClosed;
            break;
        }
        texts << FF::decodeText(value.mid(from, at - from), delim);
        from = at + 1;
    }
    return texts;
}

QString TvxTranslationTable::joinValue(const QStringList &texts, QChar delim)
{
    QString value;
    for (const QString &text : texts) {
        value += FF::encodeText(text, delim);
        value += delim;
    }
    return value;
}

bool TvxTranslationTable::load(const QString &fileName, QString *error)
{
    auto fail = [error](const QString &message) {
        if (error)
            *error = message;
        return false;
    };
    const QFileInfo info(fileName);
    if (!info.exists())
        return fail(QStringLiteral("%1: no such file").arg(fileName));
    if (info.isDir())
        return fail(QStringLiteral("%1: is a folder, not a translation file").arg(fileName));
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("%1: cannot be read (%2)").arg(fileName, file.errorString()));
    // A translation file is text: a NUL byte means another kind of file or
    // a damaged one, which the INI store would read as nonsense.
    const QByteArray head = file.read(1 << 20);
    if (head.contains('\0'))
        return fail(QStringLiteral("%1: damaged or not a translation file (it holds binary data)").arg(fileName));
    file.close();

    std::unique_ptr<TMemIniFile> ini;
    try {
        ini = std::make_unique<TMemIniFile>(fileName);
    } catch (const EVexilError &e) {
        return fail(QStringLiteral("%1: %2").arg(fileName, QString::fromUtf8(e.what())));
    }
    QStringList sections;
    ini->ReadSections(sections);
    bool known = sections.isEmpty() && info.size() < 16; // an empty file is an empty translation file
    for (const QString &s : std::as_const(sections)) {
        if (s.compare(FF::OptionsSection, Qt::CaseInsensitive) == 0
            || s.compare(FF::LangNameSection, Qt::CaseInsensitive) == 0 || categoryOf(s) >= 0) {
            known = true;
            break;
        }
    }
    if (!known)
        return fail(QStringLiteral("%1: damaged or not a translation file (no options, language or category section)")
                        .arg(fileName));

    m_fileName = fileName;
    m_delimiter = FF::readDelimiter(*ini, FF::DefaultDelimiter);
    m_names.clear();
    for (int i = 1;; ++i) {
        const QString name = FF::readLanguageName(*ini, i);
        if (name.isEmpty())
            break;
        m_names << name;
    }
    m_languageCount = int(m_names.size());
    m_entries.clear();
    for (auto &index : m_index)
        index.clear();
    QList<FF::Entry> lists[StringsTypeCount];
    qsizetype total = 0;
    for (int c = 0; c < StringsTypeCount; ++c) {
        lists[c] = FF::sectionEntries(*ini, sectionName(TStringsType(c)));
        total += lists[c].size();
    }
    m_entries.reserve(total);
    for (int c = 0; c < StringsTypeCount; ++c) {
        const auto &list = lists[c];
        m_index[c].reserve(list.size());
        for (const auto &e : list) {
            const int fields = e.value.contains(m_delimiter) ? int(e.value.count(m_delimiter)
                                                                   + (e.value.endsWith(m_delimiter) ? 0 : 1))
                                                             : 2;
            m_languageCount = std::max(m_languageCount, fields);
            m_entries.append({TStringsType(c), e.key, e.value});
            // The view stays valid: an entry's key is never changed, and
            // moving the entry does not move the key's characters.
            m_index[c].insert(Vexil::FoldedKey{m_entries.last().key}, int(m_entries.size()) - 1);
        }
    }
    m_ini = std::move(ini);
    m_modified = false;
    return true;
}

bool TvxTranslationTable::save(QString *error, const QString &fileName)
{
    if (!m_ini)
        return false;
    const bool elsewhere = !fileName.isEmpty() && fileName != m_fileName;
    if (!m_modified && !elsewhere)
        return true;
    try {
        if (elsewhere)
            m_ini->Rename(fileName, false);
        m_ini->UpdateFile();
        if (elsewhere)
            m_fileName = fileName;
    } catch (const EVexilError &e) {
        if (error)
            *error = QString::fromUtf8(e.what());
        return false;
    }
    m_modified = false;
    return true;
}

QString TvxTranslationTable::languageName(int n) const
{
    if (n >= 1 && n <= m_names.size())
        return m_names.at(n - 1);
    return QStringLiteral("Language ") + QString::number(n);
}

void TvxTranslationTable::setLanguageName(int n, const QString &name)
{
    if (n < 1 || name.isEmpty() || !m_ini)
        return;
    if (n <= m_names.size() && m_names.at(n - 1) == name)
        return;
    // Unnamed languages before it get the names the suite gives them.
    while (m_names.size() < n) {
        const int k = int(m_names.size()) + 1;
        m_names << QStringLiteral("Language ") + QString::number(k);
        m_ini->WriteString(FF::LangNameSection, FF::LangPrefix + QString::number(k), m_names.last());
    }
    m_names[n - 1] = name;
    m_ini->WriteString(FF::LangNameSection, FF::LangPrefix + QString::number(n), name);
    m_languageCount = std::max(m_languageCount, int(m_names.size()));
    m_modified = true;
}

int TvxTranslationTable::indexOf(TStringsType category, const QString &key) const
{
    return m_index[category].value(Vexil::FoldedKey{key}, -1);
}

QStringList TvxTranslationTable::texts(int entry) const
{
    return splitValue(m_entries.at(entry).value, m_delimiter);
}

QString TvxTranslationTable::text(int entry, int language) const
{
    // One field cut out of the value, without splitting the others.
    const QString &value = m_entries.at(entry).value;
    if (language < 1)
        return QString();
    if (!value.contains(m_delimiter))
        return language <= 2 ? FF::decodeText(value, m_delimiter) : QString();
    qsizetype from = 0;
    for (int field = 1; field < language; ++field) {
        from = value.indexOf(m_delimiter, from);
        if (from < 0)
            return QString();
        ++from;
    }
    qsizetype end = value.indexOf(m_delimiter, from);
    if (end < 0)
        end = value.size();
    return FF::decodeText(value.mid(from, end - from), m_delimiter);
}

bool TvxTranslationTable::canStore(const QString &text)
{
    for (const QChar c : text) {
        if (c.unicode() == 0 || c == FF::FileCR || c == FF::FileLF || c == FF::DelimInText)
            return false;
    }
    return true;
}

bool TvxTranslationTable::setText(int entry, int language, const QString &text)
{
    if (language < 1)
        return false;
    TvxEntry &e = m_entries[entry];
    // A closed value that already has the field: only that field changes.
    // Fields as stored hold no line break or delimiter, so decoding and
    // encoding them again gives them back unchanged, as a full split and
    // join would.
    if (e.value.endsWith(m_delimiter)) {
        qsizetype from = 0;
        for (int field = 1; field < language && from >= 0; ++field) {
            from = e.value.indexOf(m_delimiter, from);
            if (from >= 0)
                ++from;
        }
        const qsizetype end = from >= 0 ? e.value.indexOf(m_delimiter, from) : -1;
        if (end >= 0) {
            const QString encoded = FF::encodeText(text, m_delimiter);
            if (QStringView(e.value).mid(from, end - from) == encoded)
                return false;
            e.value.replace(from, end - from, encoded);
            m_ini->WriteString(sectionName(e.category), e.key, e.value);
            m_modified = true;
            return true;
        }
    }
    bool closed = true;
    QStringList all = splitValue(e.value, m_delimiter, &closed);
    if (language <= all.size() && all.at(language - 1) == text)
        return false;
    while (all.size() < language)
        all << QString();
    all[language - 1] = text;
    e.value = joinValue(all, m_delimiter);
    m_ini->WriteString(sectionName(e.category), e.key, e.value);
    m_languageCount = std::max(m_languageCount, int(all.size()));
    m_modified = true;
    return true;
}

void TvxTranslationTable::setTexts(TStringsType category, const QString &key, const QStringList &texts)
{
    const QString value = joinValue(texts, m_delimiter);
    int i = indexOf(category, key);
    if (i >= 0 && m_entries.at(i).value == value)
        return;
    if (i < 0) {
        i = int(m_entries.size());
        m_entries.append({category, key, QString()});
        m_index[category].insert(Vexil::FoldedKey{m_entries.last().key}, i);
    }
    m_entries[i].value = value;
    m_ini->WriteString(sectionName(category), key, value);
    m_languageCount = std::max(m_languageCount, int(texts.size()));
    m_modified = true;
}

namespace {

// Language names and codes of every language Qt knows, built once.
struct LanguageTable
{
    QHash<QString, QString> codeByName; // upper-cased English name -> code
    QHash<QString, QString> nameByCode; // lower-cased code -> upper-cased name
    LanguageTable()
    {
        for (int l = QLocale::AnyLanguage + 1; l <= QLocale::LastLanguage; ++l) {
            const auto lang = QLocale::Language(l);
            const QString code = QLocale::languageToCode(lang);
            const QString name = QLocale::languageToString(lang).toUpper();
            if (code.isEmpty() || name.isEmpty())
                continue;
            codeByName.insert(name, code);
            nameByCode.insert(code.toLower(), name);
            // Files often name a language in that language: "DEUTSCH", "FRANÇAIS".
            const QString native = QLocale(lang).nativeLanguageName().toUpper();
            if (!native.isEmpty() && !codeByName.contains(native))
                codeByName.insert(native, code);
        }
    }
};

const LanguageTable &languages()
{
    static const LanguageTable table;
    return table;
}

} // namespace

QString languageCode(const QString &name)
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return QString();
    const auto &t = languages();
    const auto hit = t.codeByName.constFind(trimmed.toUpper());
    if (hit != t.codeByName.cend())
        return *hit;
    // A code already ("de", "pt_BR", "pt-BR").
    const QString lang = trimmed.section(QRegularExpression(QStringLiteral("[_-]")), 0, 0).toLower();
    if (t.nameByCode.contains(lang))
        return QString(trimmed).replace(QLatin1Char('-'), QLatin1Char('_'));
    return QString();
}

QString languageNameOf(const QString &code)
{
    const QString lang = code.trimmed().section(QRegularExpression(QStringLiteral("[_-]")), 0, 0).toLower();
    return languages().nameByCode.value(lang);
}

} // namespace Vexil::Interchange
