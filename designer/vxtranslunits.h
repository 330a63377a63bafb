#pragma once

#include "vxdesignertools_export.h"

#include <QtWidgets/QDialog>

class QComboBox;

/// The unit picker of the scans without a form: a unit of the project and
/// the form whose translation component it fetches from.
class VEXIL_DESIGNER_EXPORT TfrmTranslUnits : public QDialog
{
    Q_OBJECT
public:
    explicit TfrmTranslUnits(QWidget *parent = nullptr);

    /// Units shown by name, each with its file.
    void setUnits(const QStringList &names, const QStringList &files);
    void setForms(const QStringList &forms);

    QString selectedUnitFile() const;
    QString selectedForm() const;
    QComboBox *units() const { return cbUnits; }
    QComboBox *forms() const { return cbForms; }

private:
    QComboBox *cbUnits;
    QComboBox *cbForms;
};
