#pragma once

#include "vexil_export.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <vector>

/// An ordered list of text lines with case-insensitive searches, the
/// comma-text form used for multi-line properties, batched change
/// notification and a look-up index over delimited table keys.
///
/// The key index answers "first line whose key equals K, ignoring case" in
/// constant time. It holds every line's position under a hash of its
/// upper-cased key (no key copies), built on the first look-up and kept
/// up to date through appends, replacements, removals and insertions.
///
/// A removal leaves a hole that later look-ups and positions step over
/// (through a tree of line counts) and that is closed when the holes
/// outnumber the lines, or when the whole list or an insertion needs the
/// lines contiguous; so removing any line costs the same for any list size.
/// A reference returned by at() stays valid until the next change or the
/// next call of lines().
class VEXIL_EXPORT TvxStringList : public QObject
{
    Q_OBJECT
public:
    explicit TvxStringList(QObject *parent = nullptr);

    int count() const { return int(m_lines.size()) - m_holes; }
    bool isEmpty() const { return count() == 0; }
    const QString &at(int i) const { return m_lines.at(m_holes ? physical(i) : i); }
    const QStringList &lines() const
    {
        closeHoles();
        return m_lines;
    }

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
    /// First line that begins with @p key followed by @p delim, letter case
    /// counting, or -1.
    int indexOfExactKey(const QString &key, QChar delim) const;
    /// Field @p n of line @p i as ExtractWord() gives it.
    QString field(int i, int n, QChar delim) const;

    /// The key of @p line as indexOfKey() sees it.
    static QString keyOf(const QString &line, QChar delim);

Q_SIGNALS:
    void changed();

private:
    // One slot of the key index: the hash of a line's upper-cased key, the
    // line's place in m_lines (holes included) and where its key stands in
    // the line's text, so that a search reads the key without the list.
    struct Slot
    {
        quint32 hash;
        qint32 pos; // EmptySlot, FreedSlot or a place in m_lines
        const QChar *line;
        qint32 lineSize;
        qint32 keySize : 31;
        quint32 keyAfterDelim : 1; // the line starts with a delimiter

        QStringView key() const { return QStringView(line + keyAfterDelim, keySize); }
        // Whether the line begins with the key and a delimiter.
        bool startsLine() const { return !keyAfterDelim && keySize < lineSize; }
    };
    enum : qint32 { EmptySlot = -1, FreedSlot = -2 };

    void touched();
    void invalidateIndex();
    void rebuildIndex(QChar delim) const;
    void indexLine(int pos) const;
    void unindexLine(int pos) const;
    template<typename Match>
    int firstIndexed(QStringView key, Match match) const;

    // Holes: places in m_lines of removed lines, skipped by positions.
    int physical(int i) const;
    int logical(int pos) const;
    bool isHole(int pos) const { return m_holes && m_hole[size_t(pos)]; }
    void openHole(int pos);
    void closeHoles() const;

    mutable QStringList m_lines; // holes are null strings until closed
    int m_updateCount = 0;
    bool m_pendingChange = false;
    quint64 m_version = 0;

    mutable int m_holes = 0;
    mutable std::vector<bool> m_hole;   // per place: a hole (only while there are holes)
    mutable std::vector<qint32> m_tree; // lines per range (Fenwick tree, 1-based), likewise

    mutable std::vector<Slot> m_slots; // open addressing, power-of-two size
    mutable int m_used = 0;            // slots holding a line
    mutable int m_freed = 0;           // slots freed by a removal
    mutable QChar m_indexDelim;
    mutable bool m_indexValid = false;

    // The line of the last key found, for field() of the same line.
    mutable int m_foundIndex = -1;
    mutable quint64 m_foundVersion = 0;
    mutable QStringView m_foundLine;
};
