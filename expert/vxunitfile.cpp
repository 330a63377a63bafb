#include "vxunitfile.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QStringDecoder>

namespace Vexil::Expert {

namespace {

const QByteArray utf8Bom("\xEF\xBB\xBF");

QByteArray hashOf(const QByteArray &bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QString shown(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

} // namespace

namespace Msg {
QString notText(const QString &path)
{
    return QStringLiteral("%1 is not a text file (binary data or not UTF-8). Nothing was read.").arg(shown(path));
}
QString cannotRead(const QString &path, const QString &reason)
{
    return QStringLiteral("Cannot read %1: %2").arg(shown(path), reason);
}
QString changedOnDisk(const QString &path)
{
    return QStringLiteral("%1 was changed on disk after it was read. Nothing was written; run the command again.")
        .arg(shown(path));
}
QString readOnly(const QString &path)
{
    return QStringLiteral("%1 is read-only. Nothing was written.").arg(shown(path));
}
QString cannotWrite(const QString &path, const QString &reason)
{
    return QStringLiteral("Cannot write %1: %2. Nothing was written.").arg(shown(path), reason);
}
} // namespace Msg

bool TvxUnitFile::fail(const QString &message)
{
    m_error = message;
    return false;
}

bool TvxUnitFile::read()
{
    m_read = false;
    m_text.clear();
    m_error.clear();
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(Msg::cannotRead(m_path, file.errorString()));
    const QFileInfo info(file);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(Msg::cannotRead(m_path, file.errorString()));
    if (bytes.contains('\0'))
        return fail(Msg::notText(m_path));
    m_hash = hashOf(bytes);
    m_size = bytes.size();
    m_modified = info.lastModified();
    m_bom = bytes.startsWith(utf8Bom);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(m_bom ? QByteArrayView(bytes).sliced(utf8Bom.size()) : QByteArrayView(bytes));
    if (decoder.hasError())
        return fail(Msg::notText(m_path));
    m_text = std::move(text);
    m_read = true;
    return true;
}

bool TvxUnitFile::unchangedOnDisk() const
{
    if (!m_read)
        return false;
    const QFileInfo info(m_path);
    if (!info.exists() || info.size() != m_size)
        return false;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // Time and size alone miss an edit within the file system's time
    // resolution; the content decides.
    return hashOf(file.readAll()) == m_hash;
}

QString TvxUnitFile::checkWritable() const
{
    if (!m_read)
        return Msg::cannotWrite(m_path, QStringLiteral("it was not read first"));
    const QFileInfo info(m_path);
    if (!unchangedOnDisk())
        return Msg::changedOnDisk(m_path);
    // The owner's write bit decides too: a privileged user may write any
    // file, yet a unit marked read-only is left alone.
    if (!info.isWritable() || !(info.permissions() & QFileDevice::WriteOwner))
        return Msg::readOnly(m_path);
    if (!QFileInfo(info.absolutePath()).isWritable())
        return Msg::readOnly(m_path);
    return {};
}

bool TvxUnitFile::write(const QString &text)
{
    const QString refused = checkWritable();
    if (!refused.isEmpty())
        return fail(refused);
    QByteArray bytes = text.toUtf8();
    if (m_bom)
        bytes.prepend(utf8Bom);
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly))
        return fail(Msg::cannotWrite(m_path, file.errorString()));
    if (file.write(bytes) != bytes.size()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        return fail(Msg::cannotWrite(m_path, reason));
    }
    // The file's permissions stay as they were: QSaveFile copies them.
    if (!file.commit())
        return fail(Msg::cannotWrite(m_path, file.errorString()));
    m_text = text;
    m_hash = hashOf(bytes);
    m_size = bytes.size();
    m_modified = QFileInfo(m_path).lastModified();
    m_error.clear();
    return true;
}

} // namespace Vexil::Expert
