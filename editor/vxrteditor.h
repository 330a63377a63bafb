#pragma once

#include "vxeditorform.h"

class QListWidget;

/// The grid editor as it ships inside applications, so that end users can
/// edit a live translation component's tables.
class VEXIL_EXPORT TfrmRTEditor : public TvxEditorForm
{
    Q_OBJECT
public:
    TfrmRTEditor(TvxCustomLang *component, TStringsType kind, const TvxStringList *table, QWidget *parent = nullptr);

    /// The category name the run-time editor shows for @p kind.
    static QString categoryName(TStringsType kind);

    /// Brings @p component's tables in step with its form, edits @p table
    /// (of kind @p kind) modally and, on Apply, gives the table the edited
    /// lines and applies the active language. Returns the modal result:
    /// mrYes for Apply, mrNo for Cancel.
    static int ShowDesigner(TvxCustomLang *component, TvxStringList *table, TStringsType kind);

protected:
    bool hasComponentList() const override { return false; }
    QString dictionaryMenuCaption() const override;

private:
    QListWidget *m_list1; // List1
};
