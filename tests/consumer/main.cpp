// Shows the form, switches it to German and prints what the user sees.
// Exit status 0 when the switch translated the button, the title and the
// application's string.
#include "ui_consumerform.h"

#include "vxdispatcher.h"

#include <QtWidgets/QApplication>
#include <cstdio>

class ConsumerForm : public QWidget
{
    Q_OBJECT
public:
    ConsumerForm() { ui.setupUi(this); }
    Ui::ConsumerForm ui;
};

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    ConsumerForm form;
    form.show();
    form.ui.Vexil1->setActiveLanguage(2);
    const QString ready = form.ui.Vexil1->GetText(QStringLiteral("IDS_READY"));
    std::printf("%s|%s|%s\n", qPrintable(form.windowTitle()), qPrintable(form.ui.btnOpen->text()), qPrintable(ready));
    const bool ok = form.windowTitle() == QStringLiteral("Verbraucher") && form.ui.btnOpen->text() == QStringLiteral("Öffnen")
        && ready == QStringLiteral("Bereit");
    return ok ? 0 : 1;
}

#include "main.moc"
