// A layer's picture: chosen in a dialog, dropped, or none.
#pragma once

#include <filesystem>

#include "studio/controls/editors/control_editor.h"

class QPushButton;
class QToolButton;

namespace flumo::studio {

class LayerEditor : public ControlEditor {
    Q_OBJECT

  public:
    explicit LayerEditor(const scene::Control& control, QWidget* parent = nullptr);

    void show_value(const scene::ControlValue& value) override;
    QWidget* main_widget() override;

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ask_for_file();
    void choose(const std::filesystem::path& file);
    void show_file();

    QPushButton* file_button_;
    QToolButton* clear_button_;
    std::filesystem::path file_;
};

}  // namespace flumo::studio
