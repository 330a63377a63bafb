// Fuzz target: translators' files (.ts and .po) read from arbitrary bytes,
// then imported into a translation file, written out and read again.
#include "memini.h"
#include "vxfileformat.h"
#include "vximport.h"
#include "vxpoformat.h"
#include "vxtsformat.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace Vexil::Interchange;

namespace {

QTemporaryDir *dir = nullptr;
QString lng;

void importInto(const TvxMessageFile &messages)
{
    const QString work = dir->filePath(QStringLiteral("work.lng"));
    QFile::remove(work);
    QFile::copy(lng, work);
    TvxTranslationTable table;
    if (!table.load(work, nullptr))
        std::abort();
    importMessages(table, messages, 2);
    importQtMessages(table, messages, 3);
    QString error;
    table.save(&error);
    // Whatever was imported must read back as a translation file.
    TvxTranslationTable again;
    if (!again.load(work, &error))
        std::abort();
    // And whatever was read must write and read back the same.
    TvxMessageFile back;
    if (!Ts::fromBytes(Ts::toBytes(messages), &back, &error) || back.messages.size() != messages.messages.size())
        std::abort();
    if (!Po::fromBytes(Po::toBytes(messages), &back, &error))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication app(*argc, *argv);
    dir = new QTemporaryDir;
    lng = dir->filePath(QStringLiteral("base.lng"));
    TMemIniFile ini(lng);
    Vexil::FileFormat::writeHeader(ini, QLatin1Char('|'), {QStringLiteral("ENGLISH"), QStringLiteral("GERMAN")});
    ini.WriteString(QStringLiteral("Captions"), QStringLiteral("F.A"), QStringLiteral("Open|Öffnen|"));
    ini.WriteString(QStringLiteral("Strings"), QStringLiteral("F.IDS_1"), QStringLiteral("x\x1ay||"));
    ini.UpdateFile();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    TvxMessageFile messages;
    QString error;
    if (Ts::fromBytes(bytes, &messages, &error))
        importInto(messages);
    if (Po::fromBytes(bytes, &messages, &error))
        importInto(messages);
    return 0;
}
