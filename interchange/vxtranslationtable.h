#pragma once

// A translation file as the command-line tools see it: every category
// entry of every form, its texts per language, and the file's own text,
// which stays as it was except for the values that are changed. No
// translation component and no widget: the file is read through the INI
// store and the file-format helpers every other reader of the suite uses.

#include "vxtypes.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>
#include <memory>

class TMemIniFile;

namespace Vexil::Interchange {

/// Called now and then during long runs with the work done and the work to do.
using Progress = std::function<void(qint64 done, qint64 total)>;

/// One category entry of the file: a key "Form.entry" in a category section.
struct TvxEntry
{
    TStringsType category = stCaptions;
    QString key;    ///< as written in the file (bracketed keys stay escaped)
    QString value;  ///< as written in the file
    /// The form the key belongs to: the text before the first ".".
    QString form() const;
    /// The entry name after the form and its ".".
    QString name() const;
};

class TvxTranslationTable
{
public:
    TvxTranslationTable();
    ~TvxTranslationTable();
    TvxTranslationTable(const TvxTranslationTable &) = delete;
    TvxTranslationTable &operator=(const TvxTranslationTable &) = delete;

    /// Reads @p fileName. False with a message in @p error when the file is
    /// missing, unreadable or not a translation file; nothing is kept then.
    bool load(const QString &fileName, QString *error);
    /// Writes the file back (safely: the old file stays on failure) when
    /// something was changed, to @p fileName or the file it was read from.
    /// False with a message in @p error when it cannot be written.
    bool save(QString *error, const QString &fileName = QString());

    QString fileName() const { return m_fileName; }
    QChar delimiter() const { return m_delimiter; }
    /// The names in the file's language-name section, up to the first empty one.
    const QStringList &languageNames() const { return m_names; }
    /// The named languages, or more when an entry holds more texts.
    int languageCount() const { return m_languageCount; }
    /// Language @p n's name (from 1), "Language n" for an unnamed one.
    QString languageName(int n) const;
    /// Gives language @p n a name in the file (one past the last named
    /// language adds a language).
    void setLanguageName(int n, const QString &name);

    /// Entries in file order: categories in category order, keys in their
    /// section's order. A key repeated in a section counts once (the first).
    const QList<TvxEntry> &entries() const { return m_entries; }
    int indexOf(TStringsType category, const QString &key) const;

    /// An entry's texts per language, decoded (language n is field n-1).
    /// A value without any delimiter is one text given to the first two
    /// languages, as loading into a component does.
    QStringList texts(int entry) const;
    QString text(int entry, int language) const;
    /// Sets language @p language's text of an entry (fields missing up to
    /// it are added empty). Returns whether the value changed.
    bool setText(int entry, int language, const QString &text);
    /// Replaces an entry's whole value by @p texts, or appends the entry.
    void setTexts(TStringsType category, const QString &key, const QStringList &texts);

    bool isModified() const { return m_modified; }

    /// Whether a text can be stored so that it reads back as it is: not
    /// with the characters the file uses for line breaks and the delimiter
    /// (25, 26, 28), nor with NUL (which marks a file as binary).
    static bool canStore(const QString &text);

    /// The section word of a category and the category of a section word
    /// or table name (without regard to case), -1 for none.
    static QString sectionName(TStringsType category);
    static int categoryOf(const QString &name);

    /// Splits a raw value into its decoded texts.
    static QStringList splitValue(const QString &value, QChar delim, bool *closed = nullptr);
    /// Joins texts into a value as the suite writes it: every text followed
    /// by the delimiter.
    static QString joinValue(const QStringList &texts, QChar delim);

private:
    QString m_fileName;
    std::unique_ptr<TMemIniFile> m_ini;
    QChar m_delimiter;
    QStringList m_names;
    int m_languageCount = 0;
    QList<TvxEntry> m_entries;
    // Key (viewed in its entry, compared without regard to case) -> entry.
    QHash<Vexil::FoldedKey, int> m_index[StringsTypeCount];
    bool m_modified = false;
};

/// Language codes of translators' files ("de", "pt_BR") for language names
/// of translation files ("GERMAN", "Portuguese"), and the reverse; empty
/// when unknown. A name that is already a code gives that code.
QString languageCode(const QString &name);
QString languageNameOf(const QString &code);

} // namespace Vexil::Interchange
