#pragma once

#include "vxdesignertools_export.h"

#include <QtWidgets/QDialog>

class QCheckBox;
class QComboBox;
class QKeySequenceEdit;
class QSpinBox;
class QTabWidget;
class TVexilExpert;

/// The expert's options: the menu section and shortcut of its menu item,
/// opening all forms at start-up, and what an inserted translation
/// component gets. OK stores them and rebuilds the menu item at once.
class VEXIL_DESIGNER_EXPORT TfrmOptions : public QDialog
{
    Q_OBJECT
public:
    explicit TfrmOptions(TVexilExpert *expert, QWidget *parent = nullptr);

    /// The nine 16 by 16 pictures of the menu sections, side by side.
    static QPixmap sectionStrip();

    QComboBox *cbMenuItems() const { return m_cbMenuItems; }
    QKeySequenceEdit *hkInMenu() const { return m_hkInMenu; }
    QCheckBox *cbOpenAll() const { return m_cbOpenAll; }
    QSpinBox *edNLang() const { return m_edNLang; }
    QComboBox *cbDefTVexil() const { return m_cbDefTVexil; }
    QTabWidget *pages() const { return m_pages; }

    void accept() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TVexilExpert *m_expert;
    QTabWidget *m_pages = nullptr;
    QComboBox *m_cbMenuItems = nullptr;
    QKeySequenceEdit *m_hkInMenu = nullptr;
    QCheckBox *m_cbOpenAll = nullptr;
    QSpinBox *m_edNLang = nullptr;
    QComboBox *m_cbDefTVexil = nullptr;
};
