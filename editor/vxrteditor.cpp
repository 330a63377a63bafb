#include "vxrteditor.h"

#include "vxcomp.h"
#include "vxstringlist.h"

#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>

namespace {

const char *const runtimeCategoryNames[StringsTypeCount] = {
    "Captions", "Hints",   "DisplayLabels", "Fonts",       "MultiLines", "DlgsCaptions",
    "Strings",  "Other strings", "Locales", "Collections", "CharSets",   "ListView_TreeView_Items"};

} // namespace

TfrmRTEditor::TfrmRTEditor(TvxCustomLang *component, TStringsType kind, const TvxStringList *table, QWidget *parent)
    : TvxEditorForm(component, categoryName(kind), kind, table, parent)
    , m_list1(new QListWidget(this))
{
    setObjectName(QStringLiteral("frmRTEditor"));
    m_list1->setObjectName(QStringLiteral("List1"));
    m_list1->hide();
    m_dictionary->setTitle(dictionaryMenuCaption());
}

QString TfrmRTEditor::categoryName(TStringsType kind)
{
    return kind >= 0 && kind < StringsTypeCount ? QString::fromLatin1(runtimeCategoryNames[kind]) : QString();
}

QString TfrmRTEditor::dictionaryMenuCaption() const
{
    return QStringLiteral("&Dictionary");
}

int TfrmRTEditor::ShowDesigner(TvxCustomLang *component, TvxStringList *table, TStringsType kind)
{
    if (!component || !table)
        return mrNo;
    component->BuildList();
    TfrmRTEditor form(component, kind, table);
    const int result = form.exec();
    if (form.applied()) {
        table->setLines(form.result());
        component->ChangeLanguage();
    }
    return result;
}
