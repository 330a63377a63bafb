#include "vxdialog.h"

namespace {

QStringList fileKeys(const char *typeKey, const char *inKey, const char *acceptKey)
{
    return {QLatin1String(typeKey), QStringLiteral("File name:"), QLatin1String(inKey), QStringLiteral("Drives:"),
            QStringLiteral("Read-only"), QStringLiteral("Help"), QLatin1String(acceptKey), QStringLiteral("Cancel")};
}

QStringList keys(std::initializer_list<const char *> list)
{
    QStringList result;
    for (const char *k : list)
        result << QLatin1String(k);
    return result;
}

} // namespace

TvxLinkedDialog::TvxLinkedDialog(QWidget *dialog, const QStringList &keys)
    : m_link(new TvxDialogLink(dialog, keys))
{
}

TvxOpenDialog::TvxOpenDialog(QWidget *parent)
    : TvxOpenDialog(parent, fileKeys("Files of type:", "Look in:", "Open"), AcceptOpen)
{
}

TvxOpenDialog::TvxOpenDialog(QWidget *parent, const QStringList &keys, AcceptMode mode)
    : QFileDialog(parent)
    , TvxLinkedDialog(this, keys)
{
    setOption(DontUseNativeDialog);
    setAcceptMode(mode);
}

TvxSaveDialog::TvxSaveDialog(QWidget *parent)
    : TvxOpenDialog(parent, fileKeys("Save as type:", "Save in:", "Save"), AcceptSave)
{
}

TvxOpenPictureDialog::TvxOpenPictureDialog(QWidget *parent)
    : TvxOpenDialog(parent, fileKeys("File type:", "Look in:", "Open") << QStringLiteral("Preview"), AcceptOpen)
{
    setMimeTypeFilters({QStringLiteral("image/png"), QStringLiteral("image/jpeg"), QStringLiteral("image/bmp"),
                        QStringLiteral("application/octet-stream")});
}

TvxSavePictureDialog::TvxSavePictureDialog(QWidget *parent)
    : TvxOpenDialog(parent, fileKeys("File type:", "Look in:", "Save") << QStringLiteral("Preview"), AcceptSave)
{
    setMimeTypeFilters({QStringLiteral("image/png"), QStringLiteral("image/jpeg"), QStringLiteral("image/bmp")});
}

TvxColorDialog::TvxColorDialog(QWidget *parent)
    : QColorDialog(parent)
    , TvxLinkedDialog(this, keys({"Basic colors:", "Custom colors:", "Define Custom Colors >>", "Help", "Color",
                                  "|Solid", "Cancel", "Hue:", "Sat:", "Lum:", "Red:", "Green:", "Blue:",
                                  "Add to Custom Colors", "OK"}))
{
    setOption(DontUseNativeDialog);
}

TvxFontDialog::TvxFontDialog(QWidget *parent)
    : QFontDialog(parent)
    , TvxLinkedDialog(this, keys({"Font:", "Font style:", "Size:", "Color:", "Apply", "Effects", "Strikeout",
                                  "Underline", "Sample", "Script:", "Help", "Cancel", "OK"}))
{
    setOption(DontUseNativeDialog);
}

TvxPrinterSetupDialog::TvxPrinterSetupDialog(QWidget *parent)
    : QPageSetupDialog(parent)
    , TvxLinkedDialog(this, keys({"Printer", "Name:", "Properties", "Status:", "Type:", "Where:", "Comment:", "Paper",
                                  "Size:", "Source:", "Help", "Cancel", "OK", "Orientation", "Portrait",
                                  "Landscape"}))
{
}

TvxPrintDialog::TvxPrintDialog(QWidget *parent)
    : QPrintDialog(parent)
    , TvxLinkedDialog(this, keys({"Printer", "Name:", "Properties", "Status:", "Type:", "Where:", "Comment:", "Help",
                                  "Cancel", "OK", "Print to file", "Print", "All", "Pages", "Selection", "from:",
                                  "to:", "Copies", "Number of copies:", "Collate"}))
{
}
