#pragma once
// The program's open and save dialogs: a title, one extension with its filter,
// and the file in force as the start. A cancelled dialog gives an empty name.
// Tests put their own answers in place of the dialogs.
#include <QString>

class QWidget;

namespace osm {

class FileDialogs {
public:
    virtual ~FileDialogs() = default;
    virtual QString Open(QWidget* parent, const QString& title, const QString& ext, const QString& start);
    virtual QString Save(QWidget* parent, const QString& title, const QString& ext, const QString& start);
};

// "Graphics setup files (*.grs)" and the like, then all files.
QString FileFilter(const QString& ext);

}  // namespace osm
