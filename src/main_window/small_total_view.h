// The total and the selected time over the list, in the skin's small digits.
#pragma once

#include "skin/skin_picture.h"

#include <QString>
#include <QWidget>

namespace kestrune {

// The strip must outlive it. Window thread.
class SmallTotalView : public QWidget {
    Q_OBJECT
public:
    explicit SmallTotalView(const SkinPicture& strip, QWidget* parent = nullptr);

    void SetText(const QString& text);
    const QString& Text() const { return text_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const SkinPicture& strip_;
    QString text_;
};

} // namespace kestrune
