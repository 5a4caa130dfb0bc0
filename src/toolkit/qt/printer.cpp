// Pages to printers that the system knows, and into PDF files.
#include "toolkit/printer.hpp"

#include <QBuffer>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <algorithm>
#include <cmath>

#include "base/write_file.hpp"
#include "toolkit/qt/bitmap_qt.hpp"

namespace vntl {

namespace {

constexpr int printer_dots = 600, file_dots = 300;  // an inch
constexpr double mm_an_inch = 25.4;
constexpr double most_pixels = 60e6, largest_side = 32767;  // of the picture: one that is much larger than its sheet gets a coarser one

void Lay_Out(QPagedPaintDevice& device, const Page_Setup& setup) {
    const Paper& paper = Papers()[std::min(setup.paper, Papers().size() - 1)];
    const QPageSize size(QSizeF(paper.width, paper.height), QPageSize::Millimeter, QString(), QPageSize::FuzzyOrientationMatch);
    QPageLayout layout(size, setup.landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF());
    layout.setMode(QPageLayout::FullPageMode);
    device.setPageLayout(layout);
}

bool Paint(QPagedPaintDevice& device, int dots_per_inch, const Page_Setup& setup, double aspect, const Draw_Routine& draw) {
    const auto on_device = [&](const Rect& mm) {
        const double dots = dots_per_inch / mm_an_inch;
        return QRectF(QPointF(mm.x1 * dots, mm.y1 * dots), QPointF(mm.x2 * dots, mm.y2 * dots));
    };
    const QRectF place = on_device(Picture_On_Sheet(setup, aspect));
    if (!(place.width() >= 1 && place.height() >= 1)) return false;
    const double finer =
        std::min({1.0, std::sqrt(most_pixels / (place.width() * place.height())), largest_side / std::max(place.width(), place.height())});
    QImage image(std::max(1, qRound(place.width() * finer)), std::max(1, qRound(place.height() * finer)), QImage::Format_RGB32);
    if (image.isNull()) return false;
    image.fill(Qt::white);
    draw(*Make_Image_Device(image));
    QPainter painter;
    if (!painter.begin(&device)) return false;
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.setClipRect(on_device(Inside_Margins(setup)));
    painter.drawImage(place, image);
    return painter.end();
}

bool Print_To_Printer(const Page_Setup& setup, double aspect, const Draw_Routine& draw) {
    const QPrinterInfo info = QPrinterInfo::printerInfo(QString::fromStdString(setup.printer));
    if (info.isNull()) return false;
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setResolution(std::min(printer.resolution(), printer_dots));
    printer.setCopyCount(setup.copies);
    Lay_Out(printer, setup);
    return Paint(printer, printer.resolution(), setup, aspect, draw) && printer.printerState() != QPrinter::Error;
}

bool Print_To_File(const Page_Setup& setup, double aspect, const Draw_Routine& draw) {
    QByteArray bytes;
    QBuffer target(&bytes);
    if (!target.open(QIODevice::WriteOnly)) return false;
    {
        QPdfWriter pdf(&target);
        pdf.setResolution(file_dots);
        Lay_Out(pdf, setup);
        if (!Paint(pdf, file_dots, setup, aspect, draw)) return false;
    }
    return Replace_File(setup.file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace

std::size_t Usual_Paper() {
    const bool inches = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    const auto found = std::ranges::find(Papers(), std::string_view(inches ? "Letter" : "A4"), &Paper::name);
    return static_cast<std::size_t>(found - Papers().begin());
}

std::vector<std::string> Printer_Names() {
    std::vector<std::string> names;
    const QString usual = QPrinterInfo::defaultPrinterName();
    for (const QString& name : QPrinterInfo::availablePrinterNames())
        names.insert(name == usual ? names.begin() : names.end(), name.toStdString());
    return names;
}

Status Print_Page(const Page_Setup& setup, double aspect, const Draw_Routine& draw) {
    if (!setup.printer.empty() && !Print_To_Printer(setup, aspect, draw))
        return Status::Fail("The page cannot be printed: " + setup.printer);
    if (setup.printer.empty() && !Print_To_File(setup, aspect, draw)) return Status::Fail_File("The page cannot be written: " + setup.file);
    return Status::Done();
}

}  // namespace vntl
