#pragma once

#include "vexil_export.h"

#include <QtCore/QDate>
#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTime>

/// An INI store: sections of "name=value" lines, with typed readers and
/// writers built on the string ones.
///
/// Section and key look-ups ignore letter case; names and values keep the
/// case and blanks they were given (nothing is trimmed).
class VEXIL_EXPORT TCustomIniFile
{
public:
    explicit TCustomIniFile(const QString &fileName);
    virtual ~TCustomIniFile();

    /// The file name given at creation.
    QString FileName() const { return m_fileName; }

    virtual QString ReadString(const QString &section, const QString &ident, const QString &def) const = 0;
    virtual void WriteString(const QString &section, const QString &ident, const QString &value) = 0;

    /// A decimal number, or hexadecimal after "0x"; @p def when unreadable.
    virtual int ReadInteger(const QString &section, const QString &ident, int def) const;
    virtual void WriteInteger(const QString &section, const QString &ident, int value);
    virtual bool ReadBool(const QString &section, const QString &ident, bool def) const;
    virtual void WriteBool(const QString &section, const QString &ident, bool value);
    /// Dates, times and numbers in the text forms of the suite's locale
    /// settings (TvxLocaleSettings) at the time of the call; text that does
    /// not convert gives @p def.
    virtual QDate ReadDate(const QString &section, const QString &ident, const QDate &def) const;
    virtual QDateTime ReadDateTime(const QString &section, const QString &ident, const QDateTime &def) const;
    virtual double ReadFloat(const QString &section, const QString &ident, double def) const;
    virtual QTime ReadTime(const QString &section, const QString &ident, const QTime &def) const;
    virtual void WriteDate(const QString &section, const QString &ident, const QDate &value);
    virtual void WriteDateTime(const QString &section, const QString &ident, const QDateTime &value);
    virtual void WriteFloat(const QString &section, const QString &ident, double value);
    virtual void WriteTime(const QString &section, const QString &ident, const QTime &value);

    /// Clears @p strings and fills it with the section's key names in order.
    virtual void ReadSection(const QString &section, QStringList &strings) const = 0;
    /// Replaces @p strings with the section names in order.
    virtual void ReadSections(QStringList &strings) const = 0;
    /// Clears @p strings and fills it with the section's raw lines.
    virtual void ReadSectionValues(const QString &section, QStringList &strings) const = 0;
    virtual void EraseSection(const QString &section) = 0;
    virtual void DeleteKey(const QString &section, const QString &ident) = 0;
    /// Writes the store to its file. Throws EVexilError when it cannot;
    /// the file then stays as it was.
    virtual void UpdateFile() = 0;

    /// Whether the section has at least one line (an empty one counts as absent).
    bool SectionExists(const QString &section) const;
    bool ValueExists(const QString &section, const QString &ident) const;

private:
    QString m_fileName;
};

/// The INI store that holds the whole file in memory: read once at
/// creation, written back whole by UpdateFile().
///
/// Files are read as UTF-8, or as a single-byte Windows code page when they
/// are not valid UTF-8, and written as UTF-8. Writing replaces the file in
/// one step, so a failed or interrupted write never leaves half a file.
/// Sections and keys are indexed: look-ups cost the same for any file size.
class VEXIL_EXPORT TMemIniFile : public TCustomIniFile
{
public:
    explicit TMemIniFile(const QString &fileName);
    ~TMemIniFile() override;

    QString ReadString(const QString &section, const QString &ident, const QString &def) const override;
    void WriteString(const QString &section, const QString &ident, const QString &value) override;
    void ReadSection(const QString &section, QStringList &strings) const override;
    void ReadSections(QStringList &strings) const override;
    void ReadSectionValues(const QString &section, QStringList &strings) const override;
    void EraseSection(const QString &section) override;
    void DeleteKey(const QString &section, const QString &ident) override;
    void UpdateFile() override;

    /// Removes every section.
    void Clear();
    /// Appends the whole text as lines: per section its header, its lines
    /// and one empty line.
    void GetStrings(QStringList &strings) const;
    /// Clear(), then parses @p strings: empty lines and ";" comments are
    /// dropped, "[name]" starts a section (even a second one of the same
    /// name), other lines join the current section or are dropped before the
    /// first header.
    void SetStrings(const QStringList &strings);
    /// Sets the file UpdateFile() writes; with @p reload the store is read
    /// again from the name given at creation.
    void Rename(const QString &fileName, bool reload);
    bool isModified() const { return m_modified; }

    /// Decodes file bytes: UTF-8 when valid, else the single-byte Windows
    /// code page; the byte order mark is dropped.
    static QString decode(const QByteArray &bytes);

private:
    // A section's lines. A deleted line is left as a null string (real
    // lines are never empty) until more than half the lines are deleted,
    // so deleting costs no shifting; the key index follows each deletion.
    struct Section
    {
        QString name;
        QStringList lines;
        int dead = 0; // deleted lines still in `lines`
        mutable QHash<QString, int> keys; // upper-cased name -> first live line
        mutable QHash<QString, int> exact; // name as written -> a cached answer
        mutable QList<int> next; // line -> next line of the same name, or -1
        mutable bool indexed = false;
        int find(const QString &ident) const;
        void append(const QString &line);
        void remove(int i);
        QStringList liveLines() const;
    };

    void LoadValues();
    int findSection(const QString &name) const;
    Section &addSection(const QString &name);
    void reindexSections();

    QList<Section> m_sections;
    QHash<QString, int> m_sectionIndex; // upper-cased name -> first section
    mutable QHash<QString, int> m_sectionExact; // name as written -> the same answer
    QString m_writeName;
    bool m_modified = false;
};
