// The list of exports with their progress.
#pragma once

#include <QWidget>
#include <map>

#include "studio/export/export_queue.h"

class QVBoxLayout;

namespace flumo::studio {

/// The queue must outlive the view.
class QueueView : public QWidget {
    Q_OBJECT

  public:
    explicit QueueView(ExportQueue& queue, QWidget* parent = nullptr);

  private:
    class Row;

    void rebuild();
    void show_item(int id);

    ExportQueue& queue_;
    QVBoxLayout* rows_;
    std::map<int, Row*> shown_;
};

}  // namespace flumo::studio
