#include "vxmessages.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QSaveFile>

namespace Vexil::Interchange {

QString messageContext(const QString &form, TStringsType category)
{
    return form + QLatin1Char('/') + TvxTranslationTable::sectionName(category);
}

bool splitMessageContext(const QString &context, QString *form, TStringsType *category)
{
    const qsizetype slash = context.lastIndexOf(QLatin1Char('/'));
    if (slash <= 0)
        return false;
    const int c = TvxTranslationTable::categoryOf(context.mid(slash + 1));
    if (c < 0)
        return false;
    *form = context.left(slash);
    *category = TStringsType(c);
    return true;
}

TvxMessageFile exportMessages(const TvxTranslationTable &table, int language, const QStringList &forms,
                              const QList<TStringsType> &categories, int *skipped)
{
    TvxMessageFile file;
    file.language = languageCode(table.languageName(language));
    file.sourceLanguage = languageCode(table.languageName(1));
    QHash<QString, bool> formWanted;
    for (const QString &f : forms)
        formWanted.insert(f.toUpper(), true);
    bool categoryWanted[StringsTypeCount];
    for (int c = 0; c < StringsTypeCount; ++c)
        categoryWanted[c] = categories.isEmpty() || categories.contains(TStringsType(c));

    // Contexts in the order they first appear; each keeps its messages.
    QHash<QString, int> contextIndex;
    QList<QList<TvxMessage>> groups;
    int left = 0;
    const auto &entries = table.entries();
    for (int i = 0; i < entries.size(); ++i) {
        const TvxEntry &e = entries.at(i);
        if (!categoryWanted[e.category])
            continue;
        const QString form = e.form();
        if (!formWanted.isEmpty() && !formWanted.contains(form.toUpper()))
            continue;
        const QStringList texts = table.texts(i);
        const QString source = texts.value(0);
        if (source.isEmpty()) {
            ++left; // nothing to translate from
            continue;
        }
        const QString context = messageContext(form, e.category);
        auto hit = contextIndex.constFind(context);
        int g;
        if (hit == contextIndex.cend()) {
            g = int(groups.size());
            contextIndex.insert(context, g);
            groups.append(QList<TvxMessage>());
        } else {
            g = *hit;
        }
        TvxMessage m;
        m.context = context;
        m.comment = e.key;
        m.source = source;
        m.translation = texts.value(language - 1);
        m.finished = !m.translation.isEmpty();
        groups[g].append(std::move(m));
    }
    for (auto &group : groups)
        file.messages.append(std::move(group));
    if (skipped)
        *skipped = left;
    return file;
}

bool readMessageFile(const QString &fileName, TvxMessageFile *file, QString *error,
                     bool (*parse)(const QByteArray &, TvxMessageFile *, QString *))
{
    QFile in(fileName);
    if (!in.exists()) {
        if (error)
            *error = QStringLiteral("%1: no such file").arg(fileName);
        return false;
    }
    if (!in.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("%1: cannot be read (%2)").arg(fileName, in.errorString());
        return false;
    }
    QString why;
    if (!parse(in.readAll(), file, &why)) {
        if (error)
            *error = QStringLiteral("%1: damaged, %2").arg(fileName, why);
        return false;
    }
    return true;
}

bool writeMessageFile(const QByteArray &bytes, const QString &fileName, QString *error)
{
    QSaveFile out(fileName);
    if (!out.open(QIODevice::WriteOnly) || out.write(bytes) < 0 || !out.commit()) {
        if (error)
            *error = QStringLiteral("%1: cannot be written (%2)").arg(fileName, out.errorString());
        return false;
    }
    return true;
}

} // namespace Vexil::Interchange
