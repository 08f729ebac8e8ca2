#include "forms/file_dialogs.h"

#include <QFileDialog>

namespace osm {

QString FileFilter(const QString& ext) {
    static const struct {
        const char* ext;
        const char* kind;
    } kinds[] = {{"csv", "Reach Breaks files"},
                 {"grs", "Graphics setup files"},
                 {"phy", "Physical parameter files"},
                 {"bhp", "Production parameter files"},
                 {"fis", "Population parameter files"},
                 {"trb", "Tributary habitat files"},
                 {"rec", "Recreation parameter files"},
                 {"exp", "Experimental release files"},
                 {"out", "Results files"}};
    QString kind = ext.toUpper() + QStringLiteral(" files");
    for (const auto& k : kinds)
        if (ext == QLatin1String(k.ext)) kind = QString::fromLatin1(k.kind);
    return QStringLiteral("%1 (*.%2);;All files (*)").arg(kind, ext);
}

namespace {

void setUp(QFileDialog& d, const QString& ext, const QString& start) {
    d.setNameFilter(FileFilter(ext));
    d.setDefaultSuffix(ext);
    if (!start.isEmpty()) d.selectFile(start);
}

}  // namespace

QString FileDialogs::Open(QWidget* parent, const QString& title, const QString& ext, const QString& start) {
    QFileDialog d(parent, title);
    d.setAcceptMode(QFileDialog::AcceptOpen);
    d.setFileMode(QFileDialog::ExistingFile);
    setUp(d, ext, start);
    return d.exec() == QDialog::Accepted && !d.selectedFiles().isEmpty() ? d.selectedFiles().front() : QString();
}

QString FileDialogs::Save(QWidget* parent, const QString& title, const QString& ext, const QString& start) {
    QFileDialog d(parent, title);
    d.setAcceptMode(QFileDialog::AcceptSave);
    d.setFileMode(QFileDialog::AnyFile);
    setUp(d, ext, start);
    return d.exec() == QDialog::Accepted && !d.selectedFiles().isEmpty() ? d.selectedFiles().front() : QString();
}

}  // namespace osm
