#include "vxdicmngrservice.h"

#include "vxdictstore.h"

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>

#include <exception>

TvxDicMngrService::TvxDicMngrService(TvxDictionaryStore *store, const QString &fileName,
                                     bool readOnly, QObject *parent)
    : QObject(parent), m_store(store), m_fileName(fileName), m_readOnly(readOnly)
{
}

bool TvxDicMngrService::exportOn(QDBusConnection connection)
{
    return connection.registerObject(QStringLiteral("/"), this, QDBusConnection::ExportScriptableSlots);
}

void TvxDicMngrService::replyError(const QString &name, const QString &message)
{
    if (calledFromDBus())
        sendErrorReply(name, message);
}

// Runs @p work against the store, turning every failure into an error reply
// (or, called directly, into the default value).
template <typename F>
auto TvxDicMngrService::call(F &&work) -> decltype(work())
{
    using Result = decltype(work());
    try {
        if (!m_store->isOpen() && !m_store->open(m_fileName, m_readOnly)) {
            replyError(QStringLiteral("dicmngr.TVexilDicMngr.Error.FileError"), m_store->errorString());
            return Result();
        }
        return work();
    } catch (const EDictionaryError &e) {
        switch (e.kind()) {
        case EDictionaryError::ekArgument:
            replyError(QDBusError::errorString(QDBusError::InvalidArgs), e.message());
            break;
        case EDictionaryError::ekReadOnly:
            replyError(QStringLiteral("dicmngr.TVexilDicMngr.Error.ReadOnly"), e.message());
            break;
        case EDictionaryError::ekDatabase:
            replyError(QStringLiteral("dicmngr.TVexilDicMngr.Error.FileError"), e.message());
            break;
        }
    } catch (const std::exception &e) {
        replyError(QDBusError::errorString(QDBusError::Failed), QString::fromLocal8Bit(e.what()));
    } catch (...) {
        replyError(QDBusError::errorString(QDBusError::Failed),
                   QStringLiteral("The dictionary manager failed to answer."));
    }
    return Result();
}

int TvxDicMngrService::IndexOfLang(const QString &name)
{
    int index = -1;
    call([&] { index = m_store->indexOfLang(name); });
    return index;
}

void TvxDicMngrService::AddLanguage(const QString &name)
{
    call([&] {
        const int before = m_store->languages().size();
        m_store->addLanguage(name);
        if (m_store->languages().size() != before)
            emit changed();
    });
}

void TvxDicMngrService::AddTranslation(const QString &lang1, const QString &lang2,
                                       const QString &text1, const QString &text2)
{
    call([&] {
        m_store->addTranslation(lang1, lang2, text1, text2);
        emit changed();
    });
}

QString TvxDicMngrService::GetTranslation(const QString &source, const QString &target,
                                          const QString &text)
{
    return call([&] { return m_store->getTranslation(source, target, text); });
}

void TvxDicMngrService::SetVisible(bool visible)
{
    emit visibilityRequested(visible);
}

bool TvxDicMngrService::Save()
{
    return call([&] {
        const bool saved = m_store->save();
        if (saved)
            emit changed();
        return saved;
    });
}
