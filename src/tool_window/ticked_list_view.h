// A list with ticks on screen.
#pragma once

#include <QTreeView>

namespace kestrune {

// A click on a box, Space on a row and a screen reader's Toggle or Press on the row's box turn its tick over.
// The model is a TickedRows. What a list of its own provides is the rest: captions and widths of the columns,
// delegates of other columns than the tick's, drops, and, for texts that can be edited, the edit triggers.
// Window thread.
class TickedListView : public QTreeView {
    Q_OBJECT
public:
    explicit TickedListView(QWidget* parent = nullptr);

    // As a click on the box does; 0-based.
    void ToggleTick(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                     const QList<int>& roles = {}) override;
    // Tells a screen reader, if there is one, that the tick of a row has changed.
    virtual void TellTick(int row);
};

} // namespace kestrune
