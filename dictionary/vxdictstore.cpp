#include "vxdictstore.h"

#include <QtCore/QAtomicInt>
#include <QtCore/QFileInfo>
#include <QtCore/QVariant>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlError>
#include <QtSql/QSqlQuery>

#include <optional>

EDictionaryError::EDictionaryError(Kind kind, const QString &message)
    : std::runtime_error(message.toStdString()), m_kind(kind), m_message(message)
{
}

namespace {

// Version of the file layout, kept in SQLite's user_version.
constexpr int SchemaVersion = 1;

const char *const SchemaStatements[] = {
    "CREATE TABLE languages(id INTEGER PRIMARY KEY, name TEXT NOT NULL,"
    " folded TEXT NOT NULL UNIQUE)",
    "CREATE TABLE units(id INTEGER PRIMARY KEY)",
    "CREATE TABLE segments(unit INTEGER NOT NULL, lang INTEGER NOT NULL, text TEXT NOT NULL,"
    " PRIMARY KEY(unit, lang)) WITHOUT ROWID",
    "CREATE INDEX segments_lang_text ON segments(lang, text)",
};

// The look-up behind getTranslation: the segments index finds the units
// holding the source text in unit order, the primary key their target text.
const char TranslationSql[] =
    "SELECT t.text FROM segments AS s"
    " JOIN segments AS t ON t.unit = s.unit AND t.lang = :target"
    " WHERE s.lang = :source AND s.text = :text"
    " ORDER BY s.unit LIMIT 1";

QString foldedName(const QString &name) { return name.toCaseFolded(); }

void checkText(const QString &text)
{
    if (text.size() > TvxDictionaryStore::MaxTextLength)
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("The text is longer than %1 characters.")
                                   .arg(TvxDictionaryStore::MaxTextLength));
    if (!text.isValidUtf16())
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("The text is not valid Unicode."));
}

void checkNewText(const QString &text)
{
    checkText(text);
    if (text.isEmpty())
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("An empty text cannot be added to the dictionary."));
}

void checkLanguageName(const QString &name)
{
    checkText(name);
    if (name.isEmpty())
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("A language needs a name."));
}

} // namespace

class TvxDictionaryStore::Private
{
public:
    QString connection;
    QSqlDatabase db;
    std::optional<QSqlQuery> findUnit, translation, putSegment, newUnit, newLanguage;

    QSqlQuery prepared(const char *sql)
    {
        QSqlQuery query(db);
        query.setForwardOnly(true);
        query.prepare(QString::fromLatin1(sql));
        return query;
    }
};

namespace {
QAtomicInt connectionCounter;
}

TvxDictionaryStore::TvxDictionaryStore() : d(new Private)
{
    d->connection = QStringLiteral("vexil-dictionary-%1").arg(connectionCounter.fetchAndAddRelaxed(1));
}

TvxDictionaryStore::~TvxDictionaryStore()
{
    close();
    delete d;
}

void TvxDictionaryStore::fail(const QString &what, const QString &detail) const
{
    throw EDictionaryError(EDictionaryError::ekDatabase,
                           QStringLiteral("%1 the dictionary file \"%2\": %3")
                               .arg(what, m_fileName, detail));
}

bool TvxDictionaryStore::open(const QString &fileName, bool readOnly)
{
    close();
    m_fileName = QFileInfo(fileName).absoluteFilePath();
    m_readOnly = readOnly;
    m_error.clear();

    const QFileInfo info(m_fileName);
    if (info.isDir()) {
        m_error = QStringLiteral("Cannot open the dictionary file \"%1\": it is a folder.").arg(m_fileName);
        return false;
    }
    if (!info.exists() && readOnly) {
        m_error = QStringLiteral("Cannot open the dictionary file \"%1\": it does not exist.").arg(m_fileName);
        return false;
    }
    if (info.exists() && !info.isReadable()) {
        m_error = QStringLiteral("Cannot open the dictionary file \"%1\": it cannot be read.").arg(m_fileName);
        return false;
    }

    d->db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), d->connection);
    d->db.setDatabaseName(m_fileName);
    d->db.setConnectOptions(readOnly ? QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_BUSY_TIMEOUT=5000")
                                     : QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    auto refuse = [this](const QString &message) {
        m_error = message;
        close();
        return false;
    };
    if (!d->db.open())
        return refuse(QStringLiteral("Cannot open the dictionary file \"%1\": %2.")
                          .arg(m_fileName, d->db.lastError().text()));

    // A damaged file (or one that is no database at all) is reported and left
    // untouched: nothing has been written to it before this check.
    {
        QSqlQuery check(d->db);
        if (!check.exec(QStringLiteral("PRAGMA quick_check")) || !check.next())
            return refuse(QStringLiteral("The dictionary file \"%1\" is damaged or is not a database: %2.")
                              .arg(m_fileName, check.lastError().text()));
        const QString verdict = check.value(0).toString();
        if (verdict != QLatin1String("ok"))
            return refuse(QStringLiteral("The dictionary file \"%1\" is damaged: %2.").arg(m_fileName, verdict));
    }

    QSqlQuery query(d->db);
    int version = -1;
    int objects = -1;
    if (query.exec(QStringLiteral("PRAGMA user_version")) && query.next())
        version = query.value(0).toInt();
    if (query.exec(QStringLiteral("SELECT count(*) FROM sqlite_master")) && query.next())
        objects = query.value(0).toInt();
    query.finish();
    if (version < 0 || objects < 0)
        return refuse(QStringLiteral("Cannot read the dictionary file \"%1\": %2.")
                          .arg(m_fileName, query.lastError().text()));

    if (version == 0 && objects == 0) {
        if (readOnly)
            return refuse(QStringLiteral("The file \"%1\" holds no dictionary.").arg(m_fileName));
        bool made = query.exec(QStringLiteral("BEGIN"));
        for (const char *sql : SchemaStatements)
            made = made && query.exec(QString::fromLatin1(sql));
        made = made && query.exec(QStringLiteral("PRAGMA user_version = %1").arg(SchemaVersion));
        made = made && query.exec(QStringLiteral("COMMIT"));
        if (!made) {
            const QString detail = query.lastError().text();
            query.exec(QStringLiteral("ROLLBACK"));
            return refuse(QStringLiteral("Cannot create the dictionary file \"%1\": %2.").arg(m_fileName, detail));
        }
    } else if (version != SchemaVersion) {
        return refuse(QStringLiteral("The file \"%1\" is not a dictionary of this program"
                                     " (or one of a newer version).").arg(m_fileName));
    } else {
        const QStringList tables = d->db.tables();
        for (const char *table : {"languages", "units", "segments"}) {
            if (!tables.contains(QLatin1String(table)))
                return refuse(QStringLiteral("The dictionary file \"%1\" lacks its table \"%2\".")
                                  .arg(m_fileName, QLatin1String(table)));
        }
    }

    if (!loadLanguages())
        return refuse(QStringLiteral("Cannot read the languages of the dictionary file \"%1\": %2.")
                          .arg(m_fileName, query.lastError().text()));

    d->findUnit = d->prepared("SELECT unit FROM segments WHERE lang = ? AND text = ? ORDER BY unit LIMIT 1");
    d->translation = d->prepared(TranslationSql);
    d->putSegment = d->prepared("INSERT OR REPLACE INTO segments(unit, lang, text) VALUES(?, ?, ?)");
    d->newUnit = d->prepared("INSERT INTO units DEFAULT VALUES");
    d->newLanguage = d->prepared("INSERT INTO languages(name, folded) VALUES(?, ?)");

    if (!readOnly && !query.exec(QStringLiteral("BEGIN")))
        return refuse(QStringLiteral("Cannot write to the dictionary file \"%1\": %2.")
                          .arg(m_fileName, query.lastError().text()));
    m_open = true;
    return true;
}

bool TvxDictionaryStore::loadLanguages()
{
    m_langNames.clear();
    m_langIds.clear();
    m_langIndex.clear();
    QSqlQuery query(d->db);
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT id, name FROM languages ORDER BY id")))
        return false;
    while (query.next()) {
        m_langIds.append(query.value(0).toLongLong());
        m_langNames.append(query.value(1).toString());
        m_langIndex.insert(foldedName(m_langNames.last()), m_langNames.size() - 1);
    }
    return true;
}

void TvxDictionaryStore::close()
{
    d->findUnit.reset();
    d->translation.reset();
    d->putSegment.reset();
    d->newUnit.reset();
    d->newLanguage.reset();
    if (d->db.isValid()) {
        if (d->db.isOpen()) {
            if (m_open && !m_readOnly)
                QSqlQuery(d->db).exec(QStringLiteral("ROLLBACK"));
            d->db.close();
        }
        d->db = QSqlDatabase();
        QSqlDatabase::removeDatabase(d->connection);
    }
    m_open = false;
    m_modified = false;
    m_langNames.clear();
    m_langIds.clear();
    m_langIndex.clear();
}

void TvxDictionaryStore::checkOpen() const
{
    if (!m_open)
        throw EDictionaryError(EDictionaryError::ekDatabase,
                               m_error.isEmpty() ? QStringLiteral("No dictionary file is open.") : m_error);
}

void TvxDictionaryStore::checkWritable() const
{
    checkOpen();
    if (m_readOnly)
        throw EDictionaryError(EDictionaryError::ekReadOnly,
                               QStringLiteral("The dictionary \"%1\" is open read-only and cannot be changed.")
                                   .arg(m_fileName));
}

namespace {

// Runs a group of writes as one step: when any of them fails, the changes of
// the group are undone and the transaction holds what it held before.
class WriteStep
{
public:
    explicit WriteStep(QSqlDatabase db) : m_db(db)
    {
        QSqlQuery query(m_db);
        m_started = query.exec(QStringLiteral("SAVEPOINT step"));
        if (!m_started)
            m_error = query.lastError().text();
    }
    ~WriteStep()
    {
        if (m_started && !m_done) {
            QSqlQuery query(m_db);
            query.exec(QStringLiteral("ROLLBACK TO step"));
            query.exec(QStringLiteral("RELEASE step"));
        }
    }
    bool started() const { return m_started; }
    QString error() const { return m_error; }
    void release()
    {
        QSqlQuery(m_db).exec(QStringLiteral("RELEASE step"));
        m_done = true;
    }

private:
    QSqlDatabase m_db;
    bool m_started = false;
    bool m_done = false;
    QString m_error;
};

} // namespace

int TvxDictionaryStore::indexOfLang(const QString &name) const
{
    checkText(name);
    checkOpen();
    return m_langIndex.value(foldedName(name), -1);
}

int TvxDictionaryStore::ensureLanguage(const QString &name)
{
    const QString folded = foldedName(name);
    const auto found = m_langIndex.constFind(folded);
    if (found != m_langIndex.constEnd())
        return *found;
    QSqlQuery &query = *d->newLanguage;
    query.addBindValue(name);
    query.addBindValue(folded);
    if (!query.exec())
        fail(QStringLiteral("Cannot add a language to"), query.lastError().text());
    m_langIds.append(query.lastInsertId().toLongLong());
    query.finish();
    m_langNames.append(name);
    m_langIndex.insert(folded, m_langNames.size() - 1);
    return m_langNames.size() - 1;
}

void TvxDictionaryStore::addLanguage(const QString &name)
{
    checkLanguageName(name);
    checkWritable();
    if (m_langIndex.contains(foldedName(name)))
        return;
    ensureLanguage(name);
    m_modified = true;
}

qint64 TvxDictionaryStore::findUnit(qint64 langId, const QString &text) const
{
    QSqlQuery &query = *d->findUnit;
    query.addBindValue(langId);
    query.addBindValue(text);
    if (!query.exec())
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    const qint64 unit = query.next() ? query.value(0).toLongLong() : 0;
    query.finish();
    return unit;
}

void TvxDictionaryStore::putSegment(qint64 unitId, qint64 langId, const QString &text)
{
    QSqlQuery &query = *d->putSegment;
    query.addBindValue(unitId);
    query.addBindValue(langId);
    query.addBindValue(text);
    if (!query.exec())
        fail(QStringLiteral("Cannot write to"), query.lastError().text());
    query.finish();
}

namespace {
// Undoes additions to the in-memory language list when a write step fails.
struct LanguageSnapshot
{
    QStringList &names;
    QVector<qint64> &ids;
    QHash<QString, int> &index;
    const int count;
    bool keep = false;
    LanguageSnapshot(QStringList &n, QVector<qint64> &i, QHash<QString, int> &x)
        : names(n), ids(i), index(x), count(n.size())
    {
    }
    ~LanguageSnapshot()
    {
        if (keep)
            return;
        while (names.size() > count) {
            index.remove(foldedName(names.last()));
            names.removeLast();
            ids.removeLast();
        }
    }
};
} // namespace

void TvxDictionaryStore::addTranslation(const QString &lang1, const QString &lang2,
                                        const QString &text1, const QString &text2)
{
    checkLanguageName(lang1);
    checkLanguageName(lang2);
    checkNewText(text1);
    checkNewText(text2);
    checkWritable();
    if (foldedName(lang1) == foldedName(lang2))
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("A translation needs two different languages (both are \"%1\").")
                                   .arg(lang1));

    WriteStep step(d->db);
    if (!step.started())
        fail(QStringLiteral("Cannot write to"), step.error());
    LanguageSnapshot snapshot(m_langNames, m_langIds, m_langIndex);
    const qint64 id1 = m_langIds.at(ensureLanguage(lang1));
    const qint64 id2 = m_langIds.at(ensureLanguage(lang2));
    qint64 unit = findUnit(id1, text1);
    if (!unit)
        unit = findUnit(id2, text2);
    if (!unit) {
        QSqlQuery &query = *d->newUnit;
        if (!query.exec())
            fail(QStringLiteral("Cannot write to"), query.lastError().text());
        unit = query.lastInsertId().toLongLong();
        query.finish();
    }
    putSegment(unit, id1, text1);
    putSegment(unit, id2, text2);
    step.release();
    snapshot.keep = true;
    m_modified = true;
}

QString TvxDictionaryStore::getTranslation(const QString &source, const QString &target,
                                           const QString &text) const
{
    checkText(source);
    checkText(target);
    checkText(text);
    checkOpen();
    const int src = m_langIndex.value(foldedName(source), -1);
    const int tgt = m_langIndex.value(foldedName(target), -1);
    if (src < 0 || tgt < 0 || src == tgt || text.isEmpty())
        return QString();
    QSqlQuery &query = *d->translation;
    query.bindValue(QStringLiteral(":target"), m_langIds.at(tgt));
    query.bindValue(QStringLiteral(":source"), m_langIds.at(src));
    query.bindValue(QStringLiteral(":text"), text);
    if (!query.exec())
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    const QString result = query.next() ? query.value(0).toString() : QString();
    query.finish();
    return result;
}

bool TvxDictionaryStore::save()
{
    if (!m_open || m_readOnly)
        return false;
    QSqlQuery query(d->db);
    if (!query.exec(QStringLiteral("COMMIT"))) {
        m_error = QStringLiteral("Cannot save the dictionary file \"%1\": %2.")
                      .arg(m_fileName, query.lastError().text());
        return false;
    }
    m_modified = false;
    if (!query.exec(QStringLiteral("BEGIN"))) {
        // Without an open transaction every write would commit at once; the
        // store rather refuses writes until it is opened again.
        m_error = QStringLiteral("Cannot write to the dictionary file \"%1\": %2.")
                      .arg(m_fileName, query.lastError().text());
        m_open = false;
    }
    return true;
}

int TvxDictionaryStore::unitCount() const
{
    checkOpen();
    QSqlQuery query(d->db);
    if (!query.exec(QStringLiteral("SELECT count(*) FROM units")) || !query.next())
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    return query.value(0).toInt();
}

QVector<TvxDictionaryStore::Unit> TvxDictionaryStore::units(const QString &filter) const
{
    checkOpen();
    QHash<qint64, int> position;
    for (int i = 0; i < m_langIds.size(); ++i)
        position.insert(m_langIds.at(i), i);

    QVector<Unit> result;
    QSqlQuery query(d->db);
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral("SELECT unit, lang, text FROM segments ORDER BY unit, lang")))
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    Unit current;
    bool matches = false;
    auto flush = [&] {
        if (current.id && (filter.isEmpty() || matches))
            result.append(current);
    };
    while (query.next()) {
        const qint64 unit = query.value(0).toLongLong();
        if (unit != current.id) {
            flush();
            current.id = unit;
            current.texts = QStringList();
            for (int i = 0; i < m_langIds.size(); ++i)
                current.texts.append(QString());
            matches = false;
        }
        const int lang = position.value(query.value(1).toLongLong(), -1);
        if (lang < 0)
            continue;
        current.texts[lang] = query.value(2).toString();
        if (!matches && !filter.isEmpty())
            matches = current.texts.at(lang).contains(filter, Qt::CaseInsensitive);
    }
    flush();
    return result;
}

void TvxDictionaryStore::setSegment(qint64 unitId, int langIndex, const QString &text)
{
    checkText(text);
    checkWritable();
    if (langIndex < 0 || langIndex >= m_langIds.size())
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("There is no language number %1.").arg(langIndex));
    QSqlQuery query(d->db);
    query.prepare(QStringLiteral("SELECT 1 FROM units WHERE id = ?"));
    query.addBindValue(unitId);
    if (!query.exec())
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    if (!query.next())
        throw EDictionaryError(EDictionaryError::ekArgument,
                               QStringLiteral("The dictionary has no unit %1.").arg(unitId));
    query.finish();

    WriteStep step(d->db);
    if (!step.started())
        fail(QStringLiteral("Cannot write to"), step.error());
    if (!text.isEmpty()) {
        putSegment(unitId, m_langIds.at(langIndex), text);
    } else {
        query.prepare(QStringLiteral("DELETE FROM segments WHERE unit = ? AND lang = ?"));
        query.addBindValue(unitId);
        query.addBindValue(m_langIds.at(langIndex));
        if (!query.exec())
            fail(QStringLiteral("Cannot write to"), query.lastError().text());
        query.prepare(QStringLiteral("DELETE FROM units WHERE id = ?"
                                     " AND NOT EXISTS (SELECT 1 FROM segments WHERE unit = ?)"));
        query.addBindValue(unitId);
        query.addBindValue(unitId);
        if (!query.exec())
            fail(QStringLiteral("Cannot write to"), query.lastError().text());
    }
    step.release();
    m_modified = true;
}

void TvxDictionaryStore::deleteUnit(qint64 unitId)
{
    checkWritable();
    WriteStep step(d->db);
    if (!step.started())
        fail(QStringLiteral("Cannot write to"), step.error());
    QSqlQuery query(d->db);
    query.prepare(QStringLiteral("DELETE FROM segments WHERE unit = ?"));
    query.addBindValue(unitId);
    if (!query.exec())
        fail(QStringLiteral("Cannot write to"), query.lastError().text());
    query.prepare(QStringLiteral("DELETE FROM units WHERE id = ?"));
    query.addBindValue(unitId);
    if (!query.exec())
        fail(QStringLiteral("Cannot write to"), query.lastError().text());
    step.release();
    m_modified = true;
}

int TvxDictionaryStore::importUnits(const QVector<Segments> &units)
{
    checkWritable();
    // Refuse before anything is written, so a bad text adds nothing.
    for (const Segments &unit : units) {
        for (const auto &segment : unit) {
            checkLanguageName(segment.first);
            checkText(segment.second);
        }
    }

    WriteStep step(d->db);
    if (!step.started())
        fail(QStringLiteral("Cannot write to"), step.error());
    LanguageSnapshot snapshot(m_langNames, m_langIds, m_langIndex);
    int changed = 0;
    QVector<QPair<qint64, QString>> segments;
    for (const Segments &unit : units) {
        segments.clear();
        QVector<qint64> seen;
        for (const auto &segment : unit) {
            if (segment.second.isEmpty())
                continue;
            const qint64 lang = m_langIds.at(ensureLanguage(segment.first));
            if (seen.contains(lang))
                continue;  // the first text of a language in the unit counts
            seen.append(lang);
            segments.append({lang, segment.second});
        }
        if (segments.size() < 2)
            continue;
        qint64 target = 0;
        for (const auto &segment : segments) {
            target = findUnit(segment.first, segment.second);
            if (target)
                break;
        }
        if (!target) {
            QSqlQuery &query = *d->newUnit;
            if (!query.exec())
                fail(QStringLiteral("Cannot write to"), query.lastError().text());
            target = query.lastInsertId().toLongLong();
            query.finish();
        }
        for (const auto &segment : segments)
            putSegment(target, segment.first, segment.second);
        ++changed;
    }
    step.release();
    snapshot.keep = true;
    if (changed || m_langNames.size() > snapshot.count)
        m_modified = true;
    return changed;
}

QStringList TvxDictionaryStore::translationQueryPlan() const
{
    checkOpen();
    QSqlQuery query(d->db);
    query.prepare(QStringLiteral("EXPLAIN QUERY PLAN ") + QString::fromLatin1(TranslationSql));
    query.bindValue(QStringLiteral(":target"), 2);
    query.bindValue(QStringLiteral(":source"), 1);
    query.bindValue(QStringLiteral(":text"), QStringLiteral("x"));
    QStringList plan;
    if (!query.exec())
        fail(QStringLiteral("Cannot read"), query.lastError().text());
    while (query.next())
        plan.append(query.value(3).toString());
    return plan;
}
