#pragma once

#include "vxeditorform.h"

/// The design-time grid editor: the translation table of one category, with
/// a list to move fast between the components' rows.
class VEXIL_EXPORT TDlgForm : public TvxEditorForm
{
    Q_OBJECT
public:
    TDlgForm(TvxCustomLang *component, const QString &categoryName, TStringsType kind, const TvxStringList *table,
             QWidget *parent = nullptr);

    /// Edits @p table, category @p categoryName of kind @p kind, of
    /// @p component in a modal editor. For a collection property other than
    /// the component's own collections table, @p table is that property's
    /// list. On Apply the table receives the edited lines and true is
    /// returned; the caller then marks the form modified and applies the
    /// language where the category asks for it.
    static bool ShowDesigner(TvxCustomLang *component, const QString &categoryName, TStringsType kind,
                             TvxStringList *table);
};
