#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <stdexcept>

/// Raised by the dictionary store. `kind()` tells a caller (the bus service)
/// which sort of failure it was, so it can answer with a fitting error name.
class EDictionaryError : public std::runtime_error
{
public:
    enum Kind {
        ekArgument,  // a text or language name the store refuses
        ekReadOnly,  // a change asked of a read-only dictionary
        ekDatabase,  // the database file could not be opened, read or written
    };
    EDictionaryError(Kind kind, const QString &message);
    Kind kind() const { return m_kind; }
    QString message() const { return m_message; }

private:
    Kind m_kind;
    QString m_message;
};

/// The translation memory: units (one meaning each) holding one text per
/// language, kept in an SQLite file. Every change goes into an open
/// transaction that `save()` commits; closing or killing the program without
/// a save loses exactly what was changed since the last one.
class TvxDictionaryStore
{
public:
    /// Longest text (in UTF-16 code units) any call takes.
    static constexpr int MaxTextLength = 32768;

    /// One unit for browsing: its id and its text per language, in the
    /// order of `languages()` (empty where the unit has no text).
    struct Unit
    {
        qint64 id = 0;
        QStringList texts;
    };

    /// One unit to import: pairs of language name and text.
    using Segments = QVector<QPair<QString, QString>>;

    TvxDictionaryStore();
    ~TvxDictionaryStore();
    TvxDictionaryStore(const TvxDictionaryStore &) = delete;
    TvxDictionaryStore &operator=(const TvxDictionaryStore &) = delete;

    /// Opens (read-write: creates when missing) the dictionary @p fileName.
    /// A file that is damaged, unreadable or not a dictionary is left as it
    /// is and the store stays closed; `errorString()` names the file.
    bool open(const QString &fileName, bool readOnly = false);
    /// Closes the file, dropping whatever was not saved.
    void close();
    bool isOpen() const { return m_open; }
    bool isReadOnly() const { return m_readOnly; }
    QString fileName() const { return m_fileName; }
    QString errorString() const { return m_error; }
    /// Whether changes are waiting for `save()`.
    bool isModified() const { return m_modified; }

    /// The languages in the order they were added.
    QStringList languages() const { return m_langNames; }
    /// Position of @p name among `languages()` (letter case ignored), or -1.
    int indexOfLang(const QString &name) const;
    /// Adds the language @p name unless it is there already.
    void addLanguage(const QString &name);
    /// Records that @p text1 in @p lang1 means @p text2 in @p lang2: both go
    /// into the first unit holding text1 in lang1, else the first holding
    /// text2 in lang2, else a new unit. Unknown languages are added.
    void addTranslation(const QString &lang1, const QString &lang2,
                        const QString &text1, const QString &text2);
    /// The text in @p target of the first unit holding @p text in @p source
    /// and a text in target; empty when there is none.
    QString getTranslation(const QString &source, const QString &target, const QString &text) const;
    /// Commits the changes made so far. False when read-only, closed or
    /// when the commit fails (the changes then stay pending).
    bool save();

    /// Number of units.
    int unitCount() const;
    /// The units holding @p filter in any language (letter case ignored;
    /// an empty filter gives every unit), in the order they were made.
    QVector<Unit> units(const QString &filter = QString()) const;
    /// Sets the text of unit @p unitId in language @p langIndex; an empty
    /// text removes it, and a unit left without texts goes.
    void setSegment(qint64 unitId, int langIndex, const QString &text);
    /// Removes a unit with all its texts.
    void deleteUnit(qint64 unitId);
    /// Adds the given units in one step: each goes into the first unit that
    /// holds one of its texts, else into a new one. Nothing is added when
    /// any text is refused. Returns the number of units changed or made.
    int importUnits(const QVector<Segments> &units);

    /// The query plan SQLite chooses for `getTranslation` (one line per
    /// step), so its use of the index can be checked.
    QStringList translationQueryPlan() const;

private:
    class Private;
    Private *d;
    bool m_open = false;
    bool m_readOnly = false;
    bool m_modified = false;
    QString m_fileName;
    QString m_error;
    QStringList m_langNames;
    QVector<qint64> m_langIds;
    QHash<QString, int> m_langIndex;  // case-folded name -> position

    void checkWritable() const;
    void checkOpen() const;
    int ensureLanguage(const QString &name);
    qint64 findUnit(qint64 langId, const QString &text) const;
    void putSegment(qint64 unitId, qint64 langId, const QString &text);
    [[noreturn]] void fail(const QString &what, const QString &detail) const;
    bool loadLanguages();
};
