#pragma once

// Source units and form files read and written by the expert. A file is
// read whole as UTF-8 text; what was read (size, modification time, content
// hash) is kept, and writing back goes through QSaveFile only when the file
// on disk is still the one that was read and may be written. A refused write
// changes nothing on disk.

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

namespace Vexil::Expert {

class TvxUnitFile
{
public:
    TvxUnitFile() = default;
    explicit TvxUnitFile(const QString &path) : m_path(path) {}

    /// Reads the file. False, with error() set, for a missing or unreadable
    /// file and for binary content (a NUL byte or invalid UTF-8).
    bool read();
    bool read(const QString &path)
    {
        m_path = path;
        return read();
    }

    const QString &path() const { return m_path; }
    /// The text read, without a leading byte-order mark.
    const QString &text() const { return m_text; }
    const QString &error() const { return m_error; }
    bool isRead() const { return m_read; }

    /// Whether the file on disk is still the one read (same size, time and
    /// content).
    bool unchangedOnDisk() const;
    /// What write() would refuse for, without writing: empty when writing
    /// may go ahead.
    QString checkWritable() const;
    /// Writes @p text over the file (atomically), keeping a byte-order mark
    /// the file had. Refused (false, error() set, nothing written) when the
    /// file was not read, changed on disk since, or is read-only. After a
    /// write the file counts as read with the new text.
    bool write(const QString &text);

private:
    bool fail(const QString &message);

    QString m_path;
    QString m_text;
    QString m_error;
    bool m_read = false;
    bool m_bom = false;
    qint64 m_size = -1;
    QDateTime m_modified;
    QByteArray m_hash;
};

namespace Msg {
QString notText(const QString &path);
QString cannotRead(const QString &path, const QString &reason);
QString changedOnDisk(const QString &path);
QString readOnly(const QString &path);
QString cannotWrite(const QString &path, const QString &reason);
} // namespace Msg

} // namespace Vexil::Expert
