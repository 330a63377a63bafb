#include "vxscandriver.h"

#include "vxuiedit.h"

#include <QtCore/QFileInfo>

namespace Vexil::Expert {

namespace {

void tell(const TvxScanCallbacks &cb, TvxMessageKind kind, const QString &text)
{
    if (cb.progress)
        cb.progress(QString());
    if (cb.message)
        cb.message(kind, text);
}

void show(const TvxScanCallbacks &cb, const QString &text)
{
    if (cb.progress)
        cb.progress(text);
}

} // namespace

bool ensureFormMethods(const TvxScanInput &input, const std::function<void(TvxMessageKind, const QString &)> &message)
{
    const QString source = input.formSourcePath.isEmpty() ? input.unitPath : input.formSourcePath;
    const QString slot = languageSlotName(input.componentName);
    if (input.headerPath.isEmpty() || source.isEmpty()) {
        if (message)
            message(TvxMessageKind::Error,
                    QStringLiteral("Form %1 has no %2 beside its .ui: the methods UpdateStrings and %3 cannot be added.")
                        .arg(input.formName, input.headerPath.isEmpty() ? QStringLiteral(".h") : QStringLiteral(".cpp"),
                             slot));
        return false;
    }
    TvxUnitFile header(input.headerPath), cpp(source);
    // Both files are read and checked before either is written.
    for (TvxUnitFile *f : {&header, &cpp}) {
        if (!f->read()) {
            if (message)
                message(TvxMessageKind::Error, f->error());
            return false;
        }
    }
    QString h = ensureDeclaration(header.text(), input.formClassName, slot, QStringLiteral("private slots:"));
    h = ensureDeclaration(h, input.formClassName, QStringLiteral("UpdateStrings"), QStringLiteral("private:"));
    QString c = ensureDefinition(cpp.text(), input.formClassName, slot);
    c = ensureDefinition(c, input.formClassName, QStringLiteral("UpdateStrings"));
    const bool hChanged = h != header.text(), cChanged = c != cpp.text();
    for (TvxUnitFile *f : {&header, &cpp}) {
        const bool changed = f == &header ? hChanged : cChanged;
        const QString refused = changed ? f->checkWritable() : QString();
        if (!refused.isEmpty()) {
            if (message)
                message(TvxMessageKind::Error, refused);
            return false;
        }
    }
    if ((hChanged && !header.write(h)) || (cChanged && !cpp.write(c))) {
        if (message)
            message(TvxMessageKind::Error, hChanged && !header.error().isEmpty() ? header.error() : cpp.error());
        return false;
    }
    return true;
}

TvxScanOutcome doScanReplace(const TvxScanInput &input, const TvxScanCallbacks &cb)
{
    if (input.constSection && !ensureFormMethods(input, cb.message)) {
        if (cb.progress)
            cb.progress(QString());
        return TvxScanOutcome::Failed;
    }

    show(cb, Msg::scanning());
    TvxUnitFile unit(input.unitPath);
    if (!unit.read()) {
        tell(cb, TvxMessageKind::Error, unit.error());
        return TvxScanOutcome::Failed;
    }
    const QString &source = unit.text();
    if (source.isEmpty()) {
        if (cb.progress)
            cb.progress(QString());
        return TvxScanOutcome::Empty;
    }
    const QString prefix = callPrefix(input.formName, input.componentName, input.formsOwnUnit);
    QStringList lines;
    const TvxScanResult result = input.constSection
                                     ? scanConstSection(source, prefix, &lines)
                                     : scanStatements(source, prefix, int(input.strings.size()));
    if (!result.ok()) {
        tell(cb, TvxMessageKind::Information, result.message);
        return TvxScanOutcome::NothingFound;
    }

    if (cb.progress)
        cb.progress(QString());
    TvxFoundList list(result.rows);
    if (!cb.review || !cb.review(list))
        return TvxScanOutcome::Cancelled;

    show(cb, Msg::modifying());
    const QString rewritten = input.constSection
                                  ? rewriteConstSection(lines, list.rows(), input.formClassName, input.componentName,
                                                        prefix, lineEndOf(source))
                                  : rewriteStatements(source, list.rows());
    // Refused before anything is added: the unit stays as it is and so does
    // the table.
    const QString refused = unit.checkWritable();
    if (!refused.isEmpty()) {
        tell(cb, TvxMessageKind::Error, refused);
        return TvxScanOutcome::Failed;
    }
    // The strings go in first: should the unit's write still fail, the
    // table merely holds identifiers nobody fetches yet, and no text is lost.
    TvxStringEntries entries = stringEntries(list.rows());
    for (auto &entry : entries)
        entry.second = escapeDelimiter(entry.second, input.delimiter);
    if (!entries.isEmpty() && (!cb.addStrings || !cb.addStrings(entries))) {
        tell(cb, TvxMessageKind::Error,
             QStringLiteral("The strings could not be added to %1.%2. The source was not changed.")
                 .arg(input.formName, input.componentName));
        return TvxScanOutcome::Failed;
    }
    if (!unit.write(rewritten)) {
        tell(cb, TvxMessageKind::Error, unit.error());
        return TvxScanOutcome::Failed;
    }
    tell(cb, TvxMessageKind::Information, Msg::translated());
    return TvxScanOutcome::Done;
}

bool checkUnusedIds(const QString &unitPath, const QStringList &strings, QChar delimiter, QStringList *unused,
                    QString *error)
{
    TvxUnitFile unit(unitPath);
    if (!unit.read()) {
        if (error)
            *error = unit.error();
        return false;
    }
    *unused = unusedIdentifiers(unit.text(), strings, delimiter);
    return true;
}

bool changeComponentType(const QString &uiPath, const QStringList &sourcePaths, const QString &componentName,
                         const QString &newClass, QString *error)
{
    auto failed = [error](const QString &text) {
        if (error)
            *error = text;
        return false;
    };
    const QString newHeader = componentHeader(newClass);
    if (newHeader.isEmpty())
        return failed(QStringLiteral("%1 is not a translation component class.").arg(newClass));
    TvxUnitFile ui(uiPath);
    if (!ui.read())
        return failed(ui.error());
    const QString oldClass = uiWidgetClass(ui.text(), componentName);
    if (oldClass.isEmpty())
        return failed(QStringLiteral("The form has no component named %1.").arg(componentName));
    if (oldClass == newClass)
        return true;
    QString newUi = ui.text();
    QString why;
    if (!setUiWidgetClass(&newUi, componentName, newClass, newHeader, &why))
        return failed(why);

    // Every file is read, changed in memory and checked first; then written.
    QList<TvxUnitFile> sources;
    QStringList newTexts;
    for (const QString &path : sourcePaths) {
        if (path.isEmpty() || !QFileInfo::exists(path))
            continue;
        TvxUnitFile f(path);
        if (!f.read())
            return failed(f.error());
        const QString changed = changeDeclarationClass(f.text(), componentName, oldClass, newClass,
                                                       componentHeader(oldClass), newHeader);
        if (changed == f.text())
            continue;
        const QString refused = f.checkWritable();
        if (!refused.isEmpty())
            return failed(refused);
        sources << f;
        newTexts << changed;
    }
    const QString refused = ui.checkWritable();
    if (!refused.isEmpty())
        return failed(refused);
    if (!ui.write(newUi))
        return failed(ui.error());
    for (qsizetype i = 0; i < sources.size(); ++i) {
        if (!sources[i].write(newTexts.at(i)))
            return failed(sources[i].error());
    }
    return true;
}

bool writeUiStrings(const QString &uiPath, const QString &componentName, const QStringList &strings, QString *error)
{
    TvxUnitFile ui(uiPath);
    if (!ui.read()) {
        if (error)
            *error = ui.error();
        return false;
    }
    QString text = ui.text();
    if (!setUiStringList(&text, componentName, QStringLiteral("Strings"), strings, error))
        return false;
    if (!ui.write(text)) {
        if (error)
            *error = ui.error();
        return false;
    }
    return true;
}

bool readUiStrings(const QString &uiPath, const QString &componentName, QStringList *strings, QString *error)
{
    TvxUnitFile ui(uiPath);
    if (!ui.read()) {
        if (error)
            *error = ui.error();
        return false;
    }
    *strings = uiStringList(ui.text(), componentName, QStringLiteral("Strings"));
    return true;
}

} // namespace Vexil::Expert
