// The translation component's file operations: saving, loading and merging
// its tables with translation files shared by many forms.
#include "vxcomp.h"

#include "memini.h"
#include "vxcomponents.h"
#include "vxerrors.h"
#include "vxfileformat.h"
#include "vxformwatch.h"

#include <QtCore/QFileInfo>
#include <QtCore/QLoggingCategory>
#include <QtCore/QSet>

#include <memory>

namespace {

Q_LOGGING_CATEGORY(lcFiles, "vexil.files")

using namespace Vexil::FileFormat;

// Whether a class is one of Qt's own rather than the application's. Forms
// built by QUiLoader and form classes without Q_OBJECT report the Qt class
// they derive from, which many forms share.
bool isQtClass(const QString &className)
{
    QStringView name(className);
#ifdef QT_NAMESPACE
    const QString ns = QStringLiteral(QT_STRINGIFY(QT_NAMESPACE) "::");
    if (name.startsWith(ns))
        name = name.mid(ns.size());
#endif
    return name.size() > 1 && name.at(0) == QLatin1Char('Q') && name.at(1) >= QLatin1Char('A')
        && name.at(1) <= QLatin1Char('Z') && !name.contains(QLatin1Char(':'));
}

// Warns once per process for each class and kind of message.
void warnOnce(const QString &className, bool named)
{
    static QSet<QString> warned;
    const QString tag = className + (named ? QLatin1Char('+') : QLatin1Char('-'));
    if (warned.contains(tag))
        return;
    warned.insert(tag);
    if (named)
        qCWarning(lcFiles,
                  "Translation file keys of forms of Qt's class %s use each form's object name: "
                  "the class name does not tell such forms apart",
                  qPrintable(className));
    else
        qCWarning(lcFiles,
                  "A form of Qt's class %s has no object name: its translation file keys use the class "
                  "name and mix with those of other unnamed %s forms; give the form an object name",
                  qPrintable(className), qPrintable(className));
}

QString sectionOf(TStringsType type)
{
    return QString::fromLatin1(Vexil::IniNames[type]);
}

// Whether any category section of the file has a key beginning with @p prefix.
bool fileHasKeys(const TMemIniFile &ini, const QString &prefix)
{
    QStringList keys;
    for (int t = 0; t < StringsTypeCount; ++t) {
        ini.ReadSection(sectionOf(TStringsType(t)), keys);
        for (const QString &key : std::as_const(keys)) {
            if (key.startsWith(prefix))
                return true;
        }
    }
    return false;
}

} // namespace

QString TvxCustomLang::ownerName() const
{
    return m_owner ? m_owner->objectName() : QString();
}

QString TvxCustomLang::ownerClassName() const
{
    return formClassName(m_owner);
}

QString TvxCustomLang::filePrefix() const
{
    const QString ownerClass = ownerClassName();
    if (!m_owner || !isQtClass(ownerClass))
        return ownerClass;
    // A Qt class is shared by many forms; the object name tells them apart
    // (Qt Designer gives every form one).
    const QString name = ownerName();
    warnOnce(ownerClass, !name.isEmpty());
    return name.isEmpty() ? ownerClass : name;
}

int TvxCustomLang::saveToStore(TStringsType type, TMemIniFile &ini, QChar fileDelim)
{
    TvxStringList *list = GetPropListByType(type);
    if (!list)
        return -1;
    const QString section = sectionOf(type);
    const QString prefix = filePrefix();

    QStringList names;
    for (int i = 1; i <= m_numLanguages; ++i)
        names << (i <= m_langNames->count() ? m_langNames->at(i - 1) : QString());
    writeHeader(ini, fileDelim, names);

    const bool bracketed = isBracketed(type);
    for (const QString &line : list->lines()) {
        const int d = line.indexOf(m_langDelim);
        const QString name = d >= 0 ? line.left(d) : QString();
        const QString value = d >= 0 ? line.mid(d + 1) : line;
        const QString key = prefix + QLatin1Char('.') + name;
        // Nothing is written that would load back different: the save is
        // refused before the file is touched.
        if (const char *fault = entryFault(key, name, value, bracketed))
            refuseSave(ini, section, key, fault);
        ini.WriteString(section, prefix + QLatin1Char('.') + (bracketed ? escapeBrackets(name) : name),
                        encodeFields(value, m_langDelim, fileDelim));
    }

    // Keys of the older form (the owner's object name instead of its class
    // name) go.
    removeOlderKeys(ini, section, ownerName(), prefix);
    return list->count();
}

int TvxCustomLang::SaveToFile(TStringsType type, const QString &fileName, QChar fileDelim)
{
    // With the component's own delimiter the texts could not be told apart
    // from the line's fields again.
    if (!GetPropListByType(type) || fileDelim == m_langDelim || isReservedDelimiter(fileDelim))
        return -1;
    TMemIniFile ini(fileName);
    const int result = saveToStore(type, ini, fileDelim);
    ini.UpdateFile();
    return result;
}

void TvxCustomLang::SaveAllToFile(const QString &fileName, QChar fileDelim)
{
    if (fileDelim == m_langDelim || isReservedDelimiter(fileDelim))
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
        // An empty delimiter value is taken as the default one.
        const QChar fileDelim = readDelimiter(ini, DefaultDelimiter);

        for (int i = 1;; ++i) {
            const QString name = readLanguageName(ini, i);
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
        const QList<Entry> entries = sectionEntries(ini, section);

        const QString prefix = filePrefix();
        const QString oldPrefix = ownerName() + QLatin1Char('.');
        const QString newPrefix = prefix + QLatin1Char('.');
        // An owner of a Qt class is keyed by its object name; files written
        // before that keyed it by the class name (see fromClassKeys below).
        const bool byObjectName = prefix != ownerClassName();
        const QString classPrefix = ownerClassName() + QLatin1Char('.');
        const QString formOld = ownerName() + m_langDelim;
        const QString formNew = ownerClassName() + m_langDelim;
        // Form lines go to the top in the order inserting each at the top
        // gives: [0] for keys of this owner, [1] for class-name keys.
        QStringList top[2];
        QStringList rest[2];
        rest[0].reserve(entries.size());
        for (const Entry &entry : entries) {
            QString work = entry.key + m_langDelim;
            if (isBracketed(type))
                work = unescapeBrackets(work);
            int kind = 0;
            if (work.startsWith(oldPrefix) && !ownerName().isEmpty())
                work.remove(0, oldPrefix.size());
            else if (work.startsWith(newPrefix))
                work.remove(0, newPrefix.size());
            else if (byObjectName && work.startsWith(classPrefix)) {
                work.remove(0, classPrefix.size());
                kind = 1;
            } else
                continue; // another form's entry
            QString value = entry.value;
            if (isMissingValue(value))
                continue;
            QString line;
            if (!value.contains(fileDelim)) {
                value = decodeText(value, fileDelim);
                line = work + value + m_langDelim + value;
            } else {
                value.replace(fileDelim, m_langDelim);
                line = work + decodeText(value, fileDelim);
            }
            line = lineBreaksIn(line);
            const bool formLine = (!ownerName().isEmpty() && line.startsWith(formOld, Qt::CaseInsensitive))
                || line.startsWith(formNew, Qt::CaseInsensitive);
            if (formLine)
                top[kind].prepend(line);
            else
                rest[kind] << line;
        }
        // Class-name keys of an owner keyed by its object name are read only
        // from a file that holds no key of that object name at all: one
        // written before the object name was used. Anywhere else they belong
        // to other forms of the same Qt class.
        const bool fromClassKeys = (!top[1].isEmpty() || !rest[1].isEmpty()) && !fileHasKeys(ini, newPrefix);
        const QStringList &newTop = fromClassKeys ? top[1] : top[0];
        const QStringList &newRest = fromClassKeys ? rest[1] : rest[0];
        if (!newTop.isEmpty() || !newRest.isEmpty())
            list->setLines(newTop + list->lines() + newRest);

        if (!m_bulkLoading) {
            DelOldNames(list, type);
            ChangeLanguage();
        }
        result = int(entries.size());
    } catch (const std::exception &) {
        // A damaged file leaves the table with what was read so far.
    }
    return result;
}

int TvxCustomLang::LoadFromFile(TStringsType type, const QString &fileName, bool clear)
{
    TvxStringList *list = GetPropListByType(type);
    if (!QFileInfo::exists(fileName) || !list)
        return -1;
    std::unique_ptr<TMemIniFile> ini;
    try {
        ini = std::make_unique<TMemIniFile>(fileName);
    } catch (const std::exception &) {
        // A file that is there but cannot be read still empties the table
        // when asked to: the table is cleared before the file is opened.
        if (clear)
            list->clear();
        return -1;
    }
    return loadFromStore(type, *ini, clear);
}

int TvxCustomLang::LoadStringsFromFile(const QString &fileName, bool clear)
{
    return LoadFromFile(stStrings, fileName, clear);
}

void TvxCustomLang::loadAll(const QString &fileName, bool clear, bool apply)
{
    const std::shared_ptr<const TvxComponentList> walked = m_formWatch->components(m_owner);
    const auto shared = shareComponents(*walked);
    m_bulkLoading = true;
    const bool exists = QFileInfo::exists(fileName);
    std::unique_ptr<TMemIniFile> ini;
    if (exists) {
        try {
            ini = std::make_unique<TMemIniFile>(fileName);
        } catch (const std::exception &) {
            // An unreadable file loads nothing; each table is still
            // cleared when asked to, as a single load would.
        }
    }
    for (int t = 0; t < StringsTypeCount; ++t) {
        TvxStringList *list = GetPropListByType(TStringsType(t));
        if (!list)
            continue;
        if (ini)
            loadFromStore(TStringsType(t), *ini, clear);
        else if (exists && clear)
            list->clear();
        DelOldNames(list, TStringsType(t));
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
        // A name the table lacks is taken from the first backup line that
        // has it; later lines of that name are repeats.
        for (const QString &line : backup) {
            const QString name = Vexil::upperKey(line.left(line.indexOf(m_langDelim)));
            if (!names.contains(name)) {
                names.insert(name);
                merged << line;
            }
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
    const std::shared_ptr<const TvxComponentList> walked = m_formWatch->components(m_owner);
    const auto shared = shareComponents(*walked);
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

bool TvxCustomLang::fileHasEntries(const QString &fileName) const
{
    if (!QFileInfo(fileName).isFile())
        return false;
    try {
        const TMemIniFile ini(fileName);
        const QString byName = ownerName() + QLatin1Char('.');
        return fileHasKeys(ini, filePrefix() + QLatin1Char('.')) || (byName.size() > 1 && fileHasKeys(ini, byName));
    } catch (const std::exception &) {
        return false; // unreadable
    }
}
