#include "vxoptions.h"

#include "vxexpert.h"
#include "vxproject.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QKeySequenceEdit>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

#include <exception>

QPixmap TfrmOptions::sectionStrip()
{
    // One picture per section, in the list's order: a page, a pencil, a
    // lens, an eye, a folder, a play mark, a brick, a wrench, a question mark.
    QPixmap strip(9 * 16, 16);
    strip.fill(Qt::transparent);
    QPainter p(&strip);
    p.setRenderHint(QPainter::Antialiasing);
    const auto cell = [&p](int i) {
        p.resetTransform();
        p.translate(i * 16, 0);
    };
    p.setPen(QPen(Qt::black, 1));
    cell(0); // file
    p.setBrush(Qt::white);
    p.drawRect(3, 1, 10, 14);
    p.drawLine(5, 5, 11, 5);
    p.drawLine(5, 8, 11, 8);
    p.drawLine(5, 11, 9, 11);
    cell(1); // edit
    p.setBrush(QColor(240, 200, 40));
    p.drawPolygon(QPolygonF({QPointF(2, 14), QPointF(4, 10), QPointF(12, 2), QPointF(14, 4), QPointF(6, 12)}));
    cell(2); // search
    p.setBrush(QColor(180, 220, 250));
    p.drawEllipse(QPointF(6.5, 6.5), 4.5, 4.5);
    p.setPen(QPen(Qt::black, 2.5));
    p.drawLine(10, 10, 14, 14);
    p.setPen(QPen(Qt::black, 1));
    cell(3); // views
    p.setBrush(Qt::white);
    QPainterPath eye;
    eye.moveTo(1, 8);
    eye.quadTo(8, 1, 15, 8);
    eye.quadTo(8, 15, 1, 8);
    p.drawPath(eye);
    p.setBrush(QColor(40, 90, 200));
    p.drawEllipse(QPointF(8, 8), 2.5, 2.5);
    cell(4); // project
    p.setBrush(QColor(230, 180, 60));
    p.drawRect(1, 4, 14, 10);
    p.drawRect(1, 2, 6, 2);
    cell(5); // run
    p.setBrush(QColor(40, 160, 60));
    p.drawPolygon(QPolygonF({QPointF(4, 2), QPointF(14, 8), QPointF(4, 14)}));
    cell(6); // component
    p.setBrush(QColor(200, 60, 50));
    p.drawRect(2, 5, 12, 8);
    p.setBrush(QColor(230, 110, 90));
    p.drawRect(4, 2, 3, 3);
    p.drawRect(9, 2, 3, 3);
    cell(7); // tools
    p.setPen(QPen(QColor(90, 90, 110), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(3, 13, 10, 6);
    p.setPen(QPen(QColor(90, 90, 110), 1));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(11, 5), 3, 3);
    cell(8); // help
    p.setPen(QPen(Qt::black, 1));
    p.setBrush(QColor(60, 120, 220));
    p.drawEllipse(1, 1, 14, 14);
    p.setPen(Qt::white);
    QFont font = p.font();
    font.setPixelSize(11);
    font.setBold(true);
    p.setFont(font);
    p.drawText(QRect(1, 1, 14, 14), Qt::AlignCenter, QStringLiteral("?"));
    p.end();
    return strip;
}

TfrmOptions::TfrmOptions(TVexilExpert *expert, QWidget *parent) : QDialog(parent), m_expert(expert)
{
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));
    auto *layout = new QVBoxLayout(this);
    m_pages = new QTabWidget(this);
    layout->addWidget(m_pages);

    auto *main = new QWidget(m_pages);
    auto *mainForm = new QFormLayout(main);
    m_cbMenuItems = new QComboBox(main);
    m_cbMenuItems->setObjectName(QStringLiteral("cbMenuItems"));
    m_cbMenuItems->setIconSize(QSize(16, 16));
    const QPixmap strip = sectionStrip();
    const QStringList sections = TVexilExpert::menuSections();
    for (int i = 0; i < sections.size(); ++i)
        m_cbMenuItems->addItem(QIcon(strip.copy(i * 16, 0, 16, 16)), sections.at(i));
    auto *sectionLabel = new QLabel(QStringLiteral("&Menu section:"), main);
    sectionLabel->setBuddy(m_cbMenuItems);
    mainForm->addRow(sectionLabel, m_cbMenuItems);
    m_hkInMenu = new QKeySequenceEdit(main);
    m_hkInMenu->setObjectName(QStringLiteral("hkInMenu"));
    m_hkInMenu->installEventFilter(this);
    auto *keyLabel = new QLabel(QStringLiteral("&ShortCut:"), main);
    keyLabel->setBuddy(m_hkInMenu);
    mainForm->addRow(keyLabel, m_hkInMenu);
    m_cbOpenAll = new QCheckBox(QStringLiteral("O&pen all project forms at startup."), main);
    m_cbOpenAll->setObjectName(QStringLiteral("cbOpenAll"));
    mainForm->addRow(m_cbOpenAll);
    m_pages->addTab(main, QStringLiteral("Main"));

    auto *vexil = new QWidget(m_pages);
    auto *vexilForm = new QFormLayout(vexil);
    // The edit and its up-down are one spin box: 1 to 999, no wrap.
    m_edNLang = new QSpinBox(vexil);
    m_edNLang->setObjectName(QStringLiteral("edNLang"));
    m_edNLang->setRange(1, 999);
    m_edNLang->setWrapping(false);
    m_edNLang->installEventFilter(this);
    auto *langLabel = new QLabel(QStringLiteral("&Default NumOfLanguages:"), vexil);
    langLabel->setBuddy(m_edNLang);
    vexilForm->addRow(langLabel, m_edNLang);
    m_cbDefTVexil = new QComboBox(vexil);
    m_cbDefTVexil->setObjectName(QStringLiteral("cbDefTVexil"));
    m_cbDefTVexil->addItems(VexilProject::translationClasses());
    vexilForm->addRow(new QLabel(QStringLiteral("Default multilanguage component:"), vexil), m_cbDefTVexil);
    m_pages->addTab(vexil, QStringLiteral("TVexil"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("OK"));
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("btnOK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Cancel"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("btnCancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &TfrmOptions::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &TfrmOptions::reject);
    layout->addWidget(buttons);

    // Filled from the expert.
    if (m_expert->DefaultComponent().isEmpty())
        m_expert->SetDefaultComp(QStringLiteral("TVexil"));
    m_cbMenuItems->setCurrentIndex(qMax(0, sections.indexOf(m_expert->MenuSection())));
    m_hkInMenu->setKeySequence(m_expert->ShortCut());
    m_cbOpenAll->setChecked(m_expert->OpenAllForms());
    m_edNLang->setValue(m_expert->DefNumLang());
    m_cbDefTVexil->setCurrentIndex(qMax(0, m_cbDefTVexil->findText(m_expert->DefaultComponent())));
}

bool TfrmOptions::eventFilter(QObject *watched, QEvent *event)
{
    // The shortcut field takes one key; no modifier or Shift alone is no
    // shortcut, Ctrl stands in for them.
    if (watched == m_hkInMenu && event->type() == QEvent::KeyPress) {
        const auto *press = static_cast<QKeyEvent *>(event);
        const int key = press->key();
        if (key == Qt::Key_Control || key == Qt::Key_Shift || key == Qt::Key_Alt || key == Qt::Key_Meta
            || key == Qt::Key_AltGr || key == Qt::Key_unknown || key == 0)
            return true;
        Qt::KeyboardModifiers modifiers =
            press->modifiers() & (Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier | Qt::MetaModifier);
        if (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier)
            modifiers = Qt::ControlModifier;
        m_hkInMenu->setKeySequence(QKeySequence(QKeyCombination(modifiers, Qt::Key(key))));
        return true;
    }
    // Enter in the number field moves on as Tab does.
    if (watched == m_edNLang && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            focusNextChild();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void TfrmOptions::accept()
{
    // Runs from a button: nothing may be thrown back into the event loop.
    try {
        m_expert->SetShortCut(m_hkInMenu->keySequence());
        m_expert->SetNumLang(m_edNLang->value());
        m_expert->SetMenuSection(m_cbMenuItems->currentText());
        m_expert->SetDefaultComp(m_cbDefTVexil->currentText());
        m_expert->SetOpenAllForms(m_cbOpenAll->isChecked());
        m_expert->RemoveSettings();
        m_expert->Configure();
    } catch (const std::exception &error) {
        QMessageBox::warning(this, windowTitle(), QString::fromLocal8Bit(error.what()));
    } catch (...) {
        QMessageBox::warning(this, windowTitle(), QStringLiteral("The options could not be stored."));
    }
    QDialog::accept();
}
