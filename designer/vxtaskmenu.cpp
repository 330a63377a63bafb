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

#include <QtCore/QPointer>

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

namespace VexilDesigner {

QStringList editorVerbs(const TvxCustomLang *component)
{
    QStringList texts;
    const int count = qobject_cast<const TVexilTLV *>(component) ? verbCount + 1 : verbCount;
    for (int i = 0; i < count; ++i)
        texts << QString::fromLatin1(verbAt(i).text);
    return texts;
}

QString editorVerbCategory(int index)
{
    return index < 0 ? QString() : QString::fromLatin1(verbAt(index).category);
}

bool editorVerbEnabled(TvxCustomLang *component, int index)
{
    return component && index >= 0 && index < editorVerbs(component).size() && tableOf(component, index);
}

void commitTable(TvxCustomLang *component, const QString &property, const QStringList &before,
                 const QStringList &after)
{
    QDesignerFormWindowInterface *formWindow = QDesignerFormWindowInterface::findFormWindow(component);
    const QByteArray name = property.toLatin1();
    if (formWindow && designerStores(formWindow, component, property)) {
        // Written as an undoable property change that starts from the
        // table as it was, so undo gives that back.
        component->setProperty(name.constData(), before);
        formWindow->cursor()->setWidgetProperty(component, property, after);
        formWindow->setDirty(true);
    } else {
        component->setProperty(name.constData(), after);
        if (formWindow)
            formWindow->setDirty(true);
    }
}

bool runEditorVerb(TvxCustomLang *component, int index)
{
    // Called from Designer's menus and the expert's window: nothing may be
    // thrown back into them.
    if (!component || index < 0 || index >= editorVerbs(component).size())
        return false;
    QPointer<TvxCustomLang> guard(component);
    try {
        const Verb &verb = verbAt(index);
        TvxStringList *table = tableOf(component, index);
        if (!table)
            return false;
        const QStringList before = table->lines();
        // The table gets a line for every property the form has now.
        component->BuildList();

        TvxStringList edited;
        edited.assign(*table);
        if (!TDlgForm::ShowDesigner(component, QString::fromLatin1(verb.category), verb.kind, &edited))
            return false;
        if (!guard)
            return false;
        const QStringList after = edited.lines();
        commitTable(component, QString::fromLatin1(verb.property), before, after);
        component->ChangeLanguage();
        return true;
    } catch (const EVexilError &error) {
        if (guard)
            QMessageBox::warning(component->window(), QString::fromLatin1(component->metaObject()->className()),
                                 error.message());
    } catch (const std::exception &error) {
        if (guard)
            QMessageBox::warning(component->window(), QString::fromLatin1(component->metaObject()->className()),
                                 QString::fromLocal8Bit(error.what()));
    }
    return false;
}

} // namespace VexilDesigner

TvxTaskMenu::TvxTaskMenu(TvxCustomLang *component, QObject *parent) : QObject(parent), m_component(component)
{
    const QStringList texts = VexilDesigner::editorVerbs(component);
    for (int i = 0; i < texts.size(); ++i) {
        auto *action = new QAction(texts.at(i), this);
        // A class without the table (a linked component's dialog texts live
        // in its container) shows the verb disabled.
        action->setEnabled(VexilDesigner::editorVerbEnabled(component, i));
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
    VexilDesigner::runEditorVerb(m_component, index);
}

void TvxTaskMenu::editDoNotTranslate()
{
    // Called from Designer's menu: nothing may be thrown back into it.
    TvxCustomLang *component = m_component;
    if (!component)
        return;
    try {
        const QStringList before = component->DoNotTranslate()->lines();
        QStringList names;
        if (!TfrmNotTranslate::Execute(component, &names, component->window()) || !m_component)
            return;
        // Setting the list is its rebuild: upper-cased, repeats dropped. It
        // goes in as one undoable change and marks the form modified, like
        // an applied table.
        VexilDesigner::commitTable(component, QStringLiteral("DoNotTranslate"), before, names);
    } catch (const EVexilError &error) {
        if (m_component)
            QMessageBox::warning(component->window(), QString::fromLatin1(component->metaObject()->className()),
                                 error.message());
    } catch (const std::exception &error) {
        if (m_component)
            QMessageBox::warning(component->window(), QString::fromLatin1(component->metaObject()->className()),
                                 QString::fromLocal8Bit(error.what()));
    }
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
