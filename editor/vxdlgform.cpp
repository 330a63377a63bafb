#include "vxdlgform.h"

#include "vxstringlist.h"

TDlgForm::TDlgForm(TvxCustomLang *component, const QString &categoryName, TStringsType kind,
                   const TvxStringList *table, QWidget *parent)
    : TvxEditorForm(component, categoryName, kind, table, parent)
{
}

bool TDlgForm::ShowDesigner(TvxCustomLang *component, const QString &categoryName, TStringsType kind,
                            TvxStringList *table)
{
    if (!table)
        return false;
    TDlgForm form(component, categoryName, kind, table);
    form.exec();
    if (!form.applied())
        return false;
    table->setLines(form.result());
    return true;
}
