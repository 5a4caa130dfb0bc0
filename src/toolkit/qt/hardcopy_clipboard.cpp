// A metafile for the clipboard, under the names by which the programs of an office ask for one.
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QMimeData>
#include <QTemporaryDir>

#include "toolkit/hardcopy.hpp"

namespace vntl {

Status HardCopy_To_Clipboard(const Hardcopy_Options& options, const Draw_Routine& draw) {
    const QTemporaryDir directory;
    const QString name = directory.filePath(options.old_metafile ? "picture.wmf" : "picture.emf");
    const Status written = directory.isValid() ? HardCopy(Hardcopy_Driver::metafile, name.toStdString(), options, draw)
                                               : Status::Fail_File("No temporary directory can be made: " + directory.path().toStdString());
    if (written.failed) return written;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) return Status::Fail_File("The picture cannot be read again: " + name.toStdString());
    auto* const data = new QMimeData;
    data->setData(options.old_metafile ? "image/x-wmf" : "image/x-emf", file.readAll());
    QGuiApplication::clipboard()->setMimeData(data);
    return Status::Done();
}

}  // namespace vntl
