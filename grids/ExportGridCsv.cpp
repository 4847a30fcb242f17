#include "grids/ExportGridCsv.h"

#include "foundation/MsgBox.h"

#include <QFile>
#include <QStringEncoder>

namespace {

QString& LastFileName() {
    static QString name;
    return name;
}

// One line of the file: the text and CR LF, in the system's encoding.
class CsvFile {
public:
    explicit CsvFile(const QString& fileName) : mFile(fileName) {}
    bool Open() { return mFile.open(QIODevice::WriteOnly | QIODevice::Truncate); }
    bool WriteLine(const QString& line) {
        const QByteArray bytes = mEncoder(line + QStringLiteral("\r\n"));
        return mFile.write(bytes) == bytes.size();
    }
    bool Close() {
        const bool flushed = mFile.flush();
        mFile.close();
        return flushed && mFile.error() == QFileDevice::NoError;
    }

private:
    QFile mFile;
    QStringEncoder mEncoder{QStringConverter::System};
};

void ShowFileError() {
    MsgBox(QStringLiteral("There was an error. The file could not be created/saved. If the file "
                          "already exists it may be open by you or another user"),
           vbOKOnly, QStringLiteral("File Error"));
}

} // namespace

QString ExportFileName() {
    return LastFileName();
}

void SetExportFileName(const QString& fileName) {
    LastFileName() = fileName;
}

void ExportGridCsv(GridSource& grid) {
    FileDialogRequest request;
    request.save = true;
    request.defaultExt = QStringLiteral(".csv");
    request.filter = QStringLiteral("csv (*.csv)|*.csv");
    request.fileName = LastFileName();
    // The chosen name is kept: a cancelled dialog gives the last name back and the file is
    // written to it again.
    const QString chosen = ChooseFile(request);
    if (!chosen.isEmpty())
        LastFileName() = chosen;
    const QString fileName = LastFileName();
    if (fileName.trimmed().isEmpty())
        return;
    WriteGridCsv(grid, fileName);
}

bool WriteGridCsv(GridSource& grid, const QString& fileName) {
    if (!grid.FullyLoaded())
        grid.LoadEntireRecordset();

    CsvFile file(fileName);
    if (!file.Open()) {
        ShowFileError();
        return false;
    }

    const int columns = grid.ColumnCount();
    QString heading;
    for (int i = 1; i <= columns; ++i)
        if (grid.ColumnVisible(i))
            heading += grid.ColumnCaption(i) + QLatin1Char(',');
    bool ok = file.WriteLine(heading) && file.WriteLine(QString());

    const int rows = grid.RowCount();
    for (int r = 1; ok && r <= rows; ++r) {
        grid.SetRow(r);
        // Group header rows are left out altogether (the test is made at the first column).
        if (columns > 0 && grid.GroupRowLevel(r) > 0)
            continue;
        QString line;
        for (int i = 1; i <= columns; ++i) {
            if (grid.ColumnVisible(i)) {
                QString value = grid.Value(i);
                value.replace(QLatin1Char(','), QLatin1Char('.'));
                line += value + QLatin1Char(',');
            }
        }
        ok = file.WriteLine(line);
    }
    // A file partly written stays as it is.
    if (!file.Close() || !ok) {
        ShowFileError();
        return false;
    }

    MsgBox(QStringLiteral("The file was saved with the name '") + fileName +
               QStringLiteral("\n\nCSV files are compatible with Microsoft Excel and many other "
                              "programs. You can open the file using MS Excel. However, if you "
                              "use Excel to create and add formulas then you should save the "
                              "file afterwards as an XLS filetype to keep your formulas intact."),
           vbOKOnly + vbInformation, QStringLiteral("Saved"));
    return true;
}
