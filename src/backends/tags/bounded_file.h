// A file opened for reading that gives out a limited amount.
#pragma once

#include "backends/formats/byte_source.h"
#include "components/outcome.h"

#include <QFile>
#include <QString>

namespace kestrune {

// Whatever a damaged or hostile file tells a reader to fetch, the reader comes to an end: after the budget
// every read gives nothing, as at the end of the file. One thread.
class BoundedFile : public ByteSource {
public:
    explicit BoundedFile(const QString& path);

    // Ok, or NotFound for what is missing, refused, or no regular file (a pipe could block for ever).
    Outcome Open();

    QString Path() const { return file_.fileName(); }
    qint64 SizeBytes() const override { return sizeBytes_; }
    qint64 Position() const { return position_; }
    // A position behind the end is kept; reads there give nothing.
    void Seek(qint64 position);
    // Up to `bytes`; fewer at the end of the file or of the budget.
    qint64 Read(char* out, qint64 bytes);
    QByteArray Read(qint64 bytes);
    QByteArray ReadAt(qint64 position, qint64 bytes) override;
    // Gives the next reader of the same file a full budget.
    void RenewBudget();
    // The same to one who reads a tag, in which there may be many large pictures.
    void RenewBudgetForTag();
    // Another amount, until the next renewal.
    void SetBudget(qint64 bytes);

private:
    QFile file_;
    qint64 sizeBytes_ = 0;
    qint64 position_ = 0;
    qint64 budgetBytes_ = 0;
    qint64 leastCostBytes_ = 0; // of a read, so that a chain of tiny ones ends too
};

} // namespace kestrune
