// The translation component's file operations: saving, loading and merging
// its tables with translation files shared by many forms.
#include "vxcomp.h"

#include "memini.h"
#include "vxcomponents.h"
#include "vxerrors.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSet>

namespace {

const QString optionsSection = QStringLiteral("OPTIONS");
const QString delimiterKey = QStringLiteral("DELIMITER");
const QString langNameSection = QStringLiteral("Language names - for internal use only!");
const QString langPrefix = QStringLiteral("Language_");
const QString wrongLangSection = QStringLiteral("Language names - for intenal use only!");

// Characters that keep a multi-line text on one file line.
const QChar fileCR(25);
const QChar fileLF(26);
// Marks a value the store could not find.
const QChar missingValue(255);

bool isBracketed(TStringsType type)
{
    return type == stCollections || type == stListView_TreeView_Items;
}

QString sectionOf(TStringsType type)
{
    return QString::fromLatin1(Vexil::IniNames[type]);
}

} // namespace

QString TvxCustomLang::ownerName() const
{
    return m_owner ? m_owner->objectName() : QString();
}

QString TvxCustomLang::ownerClassName() const
{
    return m_owner ? QString::fromLatin1(m_owner->metaObject()->className()) : QString();
}

int TvxCustomLang::saveToStore(TStringsType type, TMemIniFile &ini, QChar fileDelim)
{
    TvxStringList *list = GetPropListByType(type);
    if (!list)
        return -1;
    const QString section = sectionOf(type);
    const QString ownerClass = ownerClassName();

    ini.WriteString(optionsSection, delimiterKey, QString(fileDelim));
    ini.EraseSection(langNameSection);
    for (int i = 1; i <= m_numLanguages; ++i) {
        QString name = i <= m_langNames->count() ? m_langNames->at(i - 1) : QString();
        if (name.isEmpty())
            name = QStringLiteral("Language ") + QString::number(i);
        ini.WriteString(langNameSection, langPrefix + QString::number(i), name);
    }
    ini.EraseSection(wrongLangSection);

    for (const QString &line : list->lines()) {
        const int d = line.indexOf(m_langDelim);
        QString name = d >= 0 ? line.left(d) : QString();
        QString value = d >= 0 ? line.mid(d + 1) : line;
        if (isBracketed(type)) {
            name.replace(QLatin1Char('['), QLatin1Char('-'));
            name.replace(QLatin1Char(']'), QLatin1Char('+'));
        }
        value.replace(m_langDelim, fileDelim);
        value.replace(QChar(13), fileCR);
        value.replace(QChar(10), fileLF);
        ini.WriteString(section, ownerClass + QLatin1Char('.') + name, value);
    }

    // Keys of the older form (the owner's object name instead of its class
    // name) go. When both names are the same those are the keys just
    // written, and nothing is old.
    const QString oldPrefix = ownerName() + QLatin1Char('.');
    if (ownerName() != ownerClass) {
        QStringList text;
        ini.GetStrings(text);
        const QString header = QLatin1Char('[') + section + QLatin1Char(']');
        int start = 0;
        for (int i = 0; i < text.size(); ++i) {
            if (text.at(i).compare(header, Qt::CaseInsensitive) == 0) {
                start = i + 1;
                break;
            }
        }
        bool removed = false;
        // The file's last line is never looked at; the format has always
        // behaved so.
        int i = start;
        while (i < text.size() - 1) {
            const QString &line = text.at(i);
            if (line.startsWith(oldPrefix)) {
                text.removeAt(i);
                removed = true;
                continue;
            }
            if (!line.isEmpty() && line.startsWith(QLatin1Char('[')))
                break;
            ++i;
        }
        if (removed)
            ini.SetStrings(text);
    }
    return list->count();
}

int TvxCustomLang::SaveToFile(TStringsType type, const QString &fileName, QChar fileDelim)
{
    // With the component's own delimiter the texts could not be told apart
    // from the line's fields again.
    if (!GetPropListByType(type) || fileDelim == m_langDelim)
        return -1;
    TMemIniFile ini(fileName);
    const int result = saveToStore(type, ini, fileDelim);
    ini.UpdateFile();
    return result;
}

void TvxCustomLang::SaveAllToFile(const QString &fileName, QChar fileDelim)
{
    if (fileDelim == m_langDelim)
        return;
    // One store for all categories: the file is read once and replaced once,
    // with the same text category-by-category saves would leave.
    TMemIniFile ini(fileName);
    for (int t = 0; t < StringsTypeCount; ++t)
        saveToStore(TStringsType(t), ini, fileDelim);
    ini.UpdateFile();
}

int TvxCustomLang::SaveStringsToFile(const QString &fileName, QChar fileDelim)
{
    return SaveToFile(stStrings, fileName, fileDelim);
}

int TvxCustomLang::loadFromStore(TStringsType type, const TMemIniFile &ini, bool clear)
{
    TvxStringList *list = GetPropListByType(type);
    if (!list)
        return -1;
    if (clear)
        list->clear();
    int result = -1;
    try {
        const QString delimText = ini.ReadString(optionsSection, delimiterKey, QStringLiteral("|"));
        // An empty delimiter value is taken as the default one.
        const QChar fileDelim = delimText.isEmpty() ? QLatin1Char('|') : delimText.at(0);

        for (int i = 1;; ++i) {
            const QString name = ini.ReadString(langNameSection, langPrefix + QString::number(i), QString());
            if (name.isEmpty())
                break;
            if (m_langNames->count() < i)
                m_langNames->append(name);
            else
                m_langNames->replace(i - 1, name);
            if (i >= m_numLanguages)
                break;
        }

        // One pass over the section's lines: the first line of a name holds
        // the value a look-up of that name gives, later ones are repeats.
        const QString section = sectionOf(type);
        QStringList entries;
        ini.ReadSectionValues(section, entries);
        QSet<Vexil::FoldedKey> seen;
        seen.reserve(entries.size());
        int distinct = 0;

        const QString oldPrefix = ownerName() + QLatin1Char('.');
        const QString newPrefix = ownerClassName() + QLatin1Char('.');
        const QString formOld = ownerName() + m_langDelim;
        const QString formNew = ownerClassName() + m_langDelim;
        QStringList top;
        QStringList rest;
        rest.reserve(entries.size());
        for (const QString &entry : std::as_const(entries)) {
            const int eq = entry.indexOf(QLatin1Char('='));
            const QStringView name = eq >= 0 ? QStringView(entry).left(eq) : QStringView();
            if (seen.contains(Vexil::FoldedKey{name}))
                continue;
            seen.insert(Vexil::FoldedKey{name});
            ++distinct;
            QString work = name.toString() + m_langDelim;
            if (isBracketed(type)) {
                work.replace(QLatin1Char('-'), QLatin1Char('['));
                work.replace(QLatin1Char('+'), QLatin1Char(']'));
            }
            if (work.startsWith(oldPrefix) && !ownerName().isEmpty())
                work.remove(0, oldPrefix.size());
            else if (work.startsWith(newPrefix))
                work.remove(0, newPrefix.size());
            else
                continue; // another form's entry
            QString value = entry.mid(eq + 1);
            if (value.size() == 1 && value.at(0) == missingValue)
                continue;
            QString line;
            if (!value.contains(fileDelim)) {
                line = work + value + m_langDelim + value;
            } else {
                value.replace(fileDelim, m_langDelim);
                line = work + value;
            }
            line.replace(fileCR, QChar(13));
            line.replace(fileLF, QChar(10));
            const bool formLine = (!ownerName().isEmpty() && line.startsWith(formOld, Qt::CaseInsensitive))
                || line.startsWith(formNew, Qt::CaseInsensitive);
            if (formLine)
                top.prepend(line);
            else
                rest << line;
        }
        // Form lines go to the top in the order inserting each at the top gives.
        if (!top.isEmpty() || !rest.isEmpty())
            list->setLines(top + list->lines() + rest);

        if (!m_bulkLoading) {
            DelOldNames(list, type);
            ChangeLanguage();
        }
        result = distinct;
    } catch (const std::exception &) {
        // A damaged file leaves the table with what was read so far.
    }
    return result;
}

int TvxCustomLang::LoadFromFile(TStringsType type, const QString &fileName, bool clear)
{
    if (!QFileInfo::exists(fileName) || !GetPropListByType(type))
        return -1;
    try {
        TMemIniFile ini(fileName);
        return loadFromStore(type, ini, clear);
    } catch (const std::exception &) {
        return -1;
    }
}

int TvxCustomLang::LoadStringsFromFile(const QString &fileName, bool clear)
{
    return LoadFromFile(stStrings, fileName, clear);
}

void TvxCustomLang::loadAll(const QString &fileName, bool clear, bool apply)
{
    const TvxComponentList walked(m_owner);
    const auto shared = shareComponents(walked);
    m_bulkLoading = true;
    if (QFileInfo::exists(fileName)) {
        try {
            TMemIniFile ini(fileName);
            for (int t = 0; t < StringsTypeCount; ++t) {
                TvxStringList *list = GetPropListByType(TStringsType(t));
                loadFromStore(TStringsType(t), ini, clear);
                if (list)
                    DelOldNames(list, TStringsType(t));
            }
        } catch (const std::exception &) {
            // An unreadable file loads nothing.
        }
    }
    if (apply)
        ChangeLanguage();
    m_bulkLoading = false;
}

void TvxCustomLang::LoadAllFromFile(const QString &fileName, bool clear)
{
    loadAll(fileName, clear, true);
}

void TvxCustomLang::LoadAllFromFileDNC(const QString &fileName, bool clear)
{
    loadAll(fileName, clear, false);
}

bool TvxCustomLang::mergeFromStore(TStringsType type, const TMemIniFile &ini)
{
    TvxStringList *list = GetPropListByType(type);
    if (!list)
        return false;
    const QStringList backup = list->lines();
    try {
        const bool bulk = m_bulkLoading;
        m_bulkLoading = true;
        loadFromStore(type, ini, true);
        m_bulkLoading = bulk;
        QStringList merged = list->lines();
        QSet<QString> names;
        for (const QString &line : std::as_const(merged))
            names.insert(Vexil::upperKey(line.left(line.indexOf(m_langDelim))));
        for (const QString &line : backup) {
            if (!names.contains(Vexil::upperKey(line.left(line.indexOf(m_langDelim)))))
                merged << line;
        }
        list->setLines(merged);
    } catch (const std::exception &) {
        list->setLines(backup);
        return false;
    }
    if (!m_bulkLoading) {
        DelOldNames(list, type);
        ChangeLanguage();
    }
    return true;
}

bool TvxCustomLang::MergeFromFile(TStringsType type, const QString &fileName)
{
    if (!QFileInfo::exists(fileName) || !GetPropListByType(type))
        return false;
    try {
        TMemIniFile ini(fileName);
        return mergeFromStore(type, ini);
    } catch (const std::exception &) {
        return false;
    }
}

bool TvxCustomLang::mergeAll(const QString &fileName, bool apply)
{
    const TvxComponentList walked(m_owner);
    const auto shared = shareComponents(walked);
    if (!QFileInfo::exists(fileName)) {
        m_bulkLoading = true; // the first category's merge fails at once
        return false;
    }
    m_bulkLoading = true;
    try {
        TMemIniFile ini(fileName);
        for (int t = 0; t < StringsTypeCount; ++t) {
            // A failed category stops the merge as it stands: the language
            // is not applied and bulk loading stays set.
            if (!mergeFromStore(TStringsType(t), ini))
                return false;
            DelOldNames(GetPropListByType(TStringsType(t)), TStringsType(t));
        }
    } catch (const std::exception &) {
        return false;
    }
    if (apply)
        ChangeLanguage();
    m_bulkLoading = false;
    return true;
}

bool TvxCustomLang::MergeAllFromFile(const QString &fileName)
{
    return mergeAll(fileName, true);
}

bool TvxCustomLang::MergeAllFromFileDNC(const QString &fileName)
{
    return mergeAll(fileName, false);
}
