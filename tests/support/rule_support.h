// What the tests of the rules share: files in a folder of their own, and texts that GoogleTest can print.
#pragma once

#include "playlist/playlist_rows.h"

#include <QFile>
#include <QTemporaryDir>
#include <string>
#include <vector>

namespace kestrune::rules {

inline std::string Utf8(const QString& text) {
    return text.toStdString();
}

inline std::string Raw(const QByteArray& bytes) {
    return bytes.toStdString();
}

// The content of a file; "(no file)" when there is none, so that it differs from an empty one.
inline std::string Content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string("(no file)");
}

// A folder that goes with the test. Paths have no separator at their end.
class Folder {
public:
    QString Path() const { return folder_.path(); }
    QString Path(const QString& name) const { return folder_.filePath(name); }
    // Creates or replaces a file; returns its path.
    QString Write(const QString& name, const QByteArray& content = {}) const {
        QFile file(Path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            return {};
        }
        return file.fileName();
    }

private:
    QTemporaryDir folder_;
};

inline PlaylistRow MakeRow(int number, const QString& title, const QString& time, const QString& size,
                           const QString& folder, const QString& fileName) {
    PlaylistRow row;
    row.fields[RowText] = QString::number(number) + u'.' + title;
    row.fields[SubTime] = time;
    row.fields[SubType] = fileName.right(3);
    row.fields[SubSize] = size;
    row.fields[SubFolder] = folder;
    row.fields[SubFileName] = fileName;
    return row;
}

inline std::vector<std::string> Column(const PlaylistRows& rows, RowField field) {
    std::vector<std::string> texts;
    for (int row = 1; row <= rows.Count(); ++row) {
        texts.push_back(Utf8(rows.Field(row, field)));
    }
    return texts;
}

} // namespace kestrune::rules
