#pragma once

#include "vexil_export.h"

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QStringList>

/// An ordered list of text lines with case-insensitive searches, the
/// comma-text form used for multi-line properties, batched change
/// notification and a look-up index over delimited table keys.
///
/// The key index answers "first line whose key equals K, ignoring case" in
/// constant time; it is kept up to date on appends and on replacements that
/// keep a line's key, and rebuilt lazily after any other change.
class VEXIL_EXPORT TvxStringList : public QObject
{
    Q_OBJECT
public:
    explicit TvxStringList(QObject *parent = nullptr);

    int count() const { return m_lines.size(); }
    bool isEmpty() const { return m_lines.isEmpty(); }
    const QString &at(int i) const { return m_lines.at(i); }
    const QStringList &lines() const { return m_lines; }

    /// Replaces all lines at once.
    void setLines(const QStringList &lines);
    /// Copies the lines of @p other; nothing happens when it is this list.
    void assign(const TvxStringList &other);

    /// Appends @p line and returns its index.
    int append(const QString &line);
    void insert(int i, const QString &line);
    void replace(int i, const QString &line);
    void removeAt(int i);
    void clear();

    /// First line equal to @p s ignoring case, or -1.
    int indexOf(const QString &s) const;
    /// First line of the form name=value whose name equals @p name ignoring case, or -1.
    int indexOfName(const QString &name) const;

    /// The lines as one comma-separated text; items holding blanks, control
    /// characters, commas or quotes are quoted, inner quotes doubled.
    QString commaText() const;
    void setCommaText(const QString &text);
    static QString toCommaText(const QStringList &items);
    static QStringList fromCommaText(const QString &text);

    /// The lines joined by line feeds, each line terminated.
    QString text() const;
    void setText(const QString &text);

    /// A number that changes with every change of the lines.
    quint64 version() const { return m_version; }

    /// Changes between beginUpdate() and endUpdate() emit changed() once.
    void beginUpdate();
    void endUpdate();

    /// First line whose key (the text before the first @p delim, or the
    /// field after a leading delimiter) equals @p key ignoring case, or -1.
    int indexOfKey(const QString &key, QChar delim) const;
    /// Field @p n of line @p i as ExtractWord() gives it. The fields of the
    /// last field number asked for are kept until the list changes, so
    /// repeated look-ups of one language neither scan nor allocate.
    QString field(int i, int n, QChar delim) const;

    /// The key of @p line as indexOfKey() sees it.
    static QString keyOf(const QString &line, QChar delim);

Q_SIGNALS:
    void changed();

private:
    void touched();
    void invalidateIndex() { m_indexValid = false; }
    void rebuildIndex(QChar delim) const;
    void indexLine(int i) const;

    QStringList m_lines;
    int m_updateCount = 0;
    bool m_pendingChange = false;
    quint64 m_version = 0;

    mutable QHash<QString, int> m_index; // upper-cased key -> first line with that key
    mutable QHash<QString, int> m_exact; // key as written -> the same answer, without upper-casing
    mutable QChar m_indexDelim;

    mutable QList<QString> m_fields;
    mutable QList<bool> m_fieldKnown;
    mutable int m_fieldNumber = -1;
    mutable QChar m_fieldDelim;
    mutable bool m_indexValid = false;
};
