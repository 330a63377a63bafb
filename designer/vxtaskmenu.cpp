#include "vxtaskmenu.h"

#include "vxcomp.h"
#include "vxdlgform.h"
#include "vxerrors.h"
#include "vxnottranslate.h"
#include "vxstringlist.h"
#include "vxvexiltlv.h"

#include <QtDesigner/QDesignerFormWindowCursorInterface>
#include <QtDesigner/QDesignerFormWindowInterface>
#include <QtDesigner/QDesignerPropertySheetExtension>
#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtDesigner/QExtensionManager>
#include <QtGui/QAction>
#include <QtWidgets/QMessageBox>

namespace {

struct Verb
{
    const char *text;     // the menu text
    const char *category; // the editor's category name
    TStringsType kind;
    const char *property; // the table's property on the component
};

// In menu order; the first is the double click's.
const Verb verbs[] = {
    {"Ca&ptions Editor...", "Captions", stCaptions, "Captions"},
    {"&Hints Editor...", "Hints", stHints, "Hints"},
    {"&DisplayLabels Editor...", "DisplayLabels", stDisplayLabels, "DisplayLabels"},
    {"S&trings Editor...", "Strings", stStrings, "Strings"},
    {"Fo&nts Editor...", "Fonts", stFonts, "Fonts"},
    {"M&ultiLines Editor...", "MultiLines", stMultiLines, "MultiLines"},
    {"D&lgsCaptions Editor...", "DlgsCaptions", stDlgsCaptions, "DlgsCaptions"},
    {"Other str&ings Editor...", "Other strings", stOtherStrings, "OtherStrings"},
    {"System locales Editor...", "Locales", stLocales, "Locales"},
    {"CharSet Editor...", "CharSets", stCharSets, "CharSets"},
    {"Collections Editor...", "Collections", stCollections, "Collections"},
};
constexpr int verbCount = int(sizeof(verbs) / sizeof(verbs[0]));

// The list- and tree-view items of a TVexilTLV have no verb of the common
// set; this one stands in for the editor behind their property. The table is
// edited as a collection under the property's name.
const Verb itemsVerb = {"ListView_TreeView_&Items Editor...", "ListView_TreeView_Items", stCollections,
                        "ListView_TreeView_Items"};

const Verb &verbAt(int index)
{
    return index < verbCount ? verbs[index] : itemsVerb;
}

TvxStringList *tableOf(TvxCustomLang *component, int index)
{
    if (index >= verbCount) {
        auto *tlv = qobject_cast<TVexilTLV *>(component);
        return tlv ? tlv->ListView_TreeView_Items() : nullptr;
    }
    return component->GetPropListByType(verbs[index].kind);
}

// Whether Designer keeps @p property of @p component in the form file.
bool designerStores(QDesignerFormWindowInterface *formWindow, QObject *component, const QString &property)
{
    QDesignerFormEditorInterface *core = formWindow->core();
    auto *sheet = qt_extension<QDesignerPropertySheetExtension *>(core->extensionManager(), component);
    if (!sheet)
        return false;
    const int index = sheet->indexOf(property);
    return index >= 0 && sheet->isVisible(index);
}

} // namespace

TvxTaskMenu::TvxTaskMenu(TvxCustomLang *component, QObject *parent) : QObject(parent), m_component(component)
{
    const int count = qobject_cast<TVexilTLV *>(component) ? verbCount + 1 : verbCount;
    for (int i = 0; i < count; ++i) {
        auto *action = new QAction(QString::fromLatin1(verbAt(i).text), this);
        // A class without the table (a linked component's dialog texts live
        // in its container) shows the verb disabled.
        action->setEnabled(tableOf(component, i) != nullptr);
        connect(action, &QAction::triggered, this, [this, i] { runVerb(i); });
        m_actions << action;
    }
    // Stands in for the editor behind the do-not-translate list.
    auto *exclude = new QAction(QStringLiteral("E&xclude components..."), this);
    connect(exclude, &QAction::triggered, this, &TvxTaskMenu::editDoNotTranslate);
    m_actions << exclude;
}

QAction *TvxTaskMenu::preferredEditAction() const
{
    return m_actions.value(0);
}

void TvxTaskMenu::runVerb(int index)
{
    // Called from Designer's menu: nothing may be thrown back into it.
    TvxCustomLang *component = m_component;
    if (!component || index < 0 || index >= m_actions.size() - 1)
        return;
    try {
        const Verb &verb = verbAt(index);
        TvxStringList *table = tableOf(component, index);
        if (!table)
            return;
        const QStringList before = table->lines();
        // The table gets a line for every property the form has now.
        component->BuildList();

        TvxStringList edited;
        edited.assign(*table);
        if (!TDlgForm::ShowDesigner(component, QString::fromLatin1(verb.category), verb.kind, &edited))
            return;
        if (!m_component)
            return;
        const QStringList after = edited.lines();
        const QString property = QString::fromLatin1(verb.property);

        QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(component);
        if (formWindow && designerStores(formWindow, component, property)) {
            // Written as an undoable property change that starts from the
            // table as it was before the rebuild, so undo gives that back.
            table->setLines(before);
            formWindow->cursor()->setWidgetProperty(component, property, after);
            formWindow->setDirty(true);
        } else {
            table->setLines(after);
            if (formWindow)
                formWindow->setDirty(true);
        }
        component->ChangeLanguage();
    } catch (const EVexilError &error) {
        reportError(component, error.message());
    } catch (const std::exception &error) {
        reportError(component, QString::fromLocal8Bit(error.what()));
    }
}

void TvxTaskMenu::editDoNotTranslate()
{
    TvxCustomLang *component = m_component;
    if (!component)
        return;
    try {
        QStringList names;
        if (!TfrmNotTranslate::Execute(component, &names, component->window()))
            return;
        if (!m_component)
            return;
        const QString property = QStringLiteral("DoNotTranslate");
        // The list goes in as an undoable property change (the component
        // upper-cases it and drops repeats as it is set) and the form is
        // modified, like after any applied edit.
        QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(component);
        if (formWindow && designerStores(formWindow, component, property))
            formWindow->cursor()->setWidgetProperty(component, property, names);
        else
            component->SetDoNotList(names);
        if (formWindow)
            formWindow->setDirty(true);
    } catch (const EVexilError &error) {
        reportError(component, error.message());
    } catch (const std::exception &error) {
        reportError(component, QString::fromLocal8Bit(error.what()));
    }
}

void TvxTaskMenu::reportError(TvxCustomLang *component, const QString &message)
{
    QMessageBox::warning(component->window(), QString::fromLatin1(component->metaObject()->className()), message);
}

TvxTaskMenuFactory::TvxTaskMenuFactory(QExtensionManager *parent) : QExtensionFactory(parent) {}

QObject *TvxTaskMenuFactory::createExtension(QObject *object, const QString &iid, QObject *parent) const
{
    if (iid != Q_TYPEID(QDesignerTaskMenuExtension))
        return nullptr;
    if (auto *component = qobject_cast<TvxCustomLang *>(object))
        return new TvxTaskMenu(component, parent);
    return nullptr;
}
