// A part of the effect panel to draw on: the drawing suites on a Cairo image.
//
//   Panel panel({.width = 150, .height = 50, .scale = 2});
//   ControlEvents(*instance, {.index = 26}, &panel).draw();
//   panel.write_png("gradient.png");
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "effect_api/suites.h"
#include "host/suite_provider.h"

namespace flumo::host {

/// The byte order that the panel prefers and supports for images; with kNeither it supports none.
enum class PixelLayout { kArgb, kBgra, kNeither };

/// Result of the colour picker: 0 and a colour, PF_Interrupt_CANCEL, or an error.
struct PickedColour {
    PF_Err status = PF_Interrupt_CANCEL;
    PF_PixelFloat colour{};
};

struct PanelOptions {
    /// In panel pixels.
    int width = 150;
    int height = 50;
    /// Image pixels per panel pixel, for sharp screens. Above 0.
    double scale = 1;
    PixelLayout layout = PixelLayout::kBgra;
    /// 16 bits a channel.
    PF_App_Color background{0x2323, 0x2323, 0x2323};
    PF_App_Color text{0xbfbf, 0xbfbf, 0xbfbf};
};

struct PanelState;

/// For one thread. Objects that the effect makes are counted in the accounting of the calling host.
class Panel : public SuiteProvider {
  public:
    /// Painted with the background colour. Throws std::invalid_argument for a size or scale that is not
    /// above 0 or that Cairo cannot hold.
    explicit Panel(const PanelOptions& options);
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;
    ~Panel() override;

    const PanelOptions& options() const { return options_; }
    /// Called instead of a dialog, with the colour that it would open with; unset it cancels.
    std::function<PickedColour(const PF_PixelFloat& sample)> colour_picker;
    /// Title of the last dialog.
    std::string picker_title;
    /// Whether it was asked to show colours as the monitor would have them.
    bool picker_converts = false;

    /// Size of the image in its own pixels.
    int image_width() const;
    int image_height() const;
    /// Red, green, blue, alpha bytes, straight, row by row.
    std::vector<uint8_t> rgba() const;
    /// Throws std::runtime_error when the file cannot be written.
    void write_png(const std::filesystem::path& path) const;
    /// Paints everything with the background colour.
    void clear();

    const void* find_suite(std::string_view name, int version) override;
    DRAWBOT_DrawRef draw_ref() override;
    /// For the suites.
    PanelState& state() { return *state_; }

  private:
    PanelOptions options_;
    std::unique_ptr<PanelState> state_;
};

}  // namespace flumo::host
