#include "media/numbered_name.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "base/failure.h"
#include "base/parse_number.h"

namespace flumo::media {
namespace {

constexpr std::size_t kMostDigits = 18;

constexpr const char* kExpectedNumber =
    "expected one frame number such as %04d or ####; %% is a percent sign and %# a # (beside %04d, ## too)";

// A piece of the name: text, or the place of the number with its digits.
struct Piece {
    std::string text;
    std::size_t digits = 0;
    bool is_number = false;
};

// The length of a `%d` or `%04d` at the beginning of the text, 0 where there is none.
std::size_t length_of_printf_place(std::string_view text) {
    if (!text.starts_with('%')) return 0;
    const std::size_t end = text.find_first_not_of("0123456789", 1);
    return end != std::string_view::npos && text[end] == 'd' ? end + 1 : 0;
}

// A single # beside these is a part of a word.
bool is_word(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

// Whether the run of # that begins at `place` may be the number's place.
bool is_hash_place(std::string_view text, std::size_t place, std::size_t length) {
    if (length >= 2) return true;
    const bool in_file_name = text.find('/', place) == std::string_view::npos;
    const bool after_word = place > 0 && is_word(text[place - 1]);
    const bool before_word = place + 1 < text.size() && is_word(text[place + 1]);
    return in_file_name && !after_word && !before_word;
}

// The name with its escapes resolved. Runs of # become pieces of their own where `takes_hashes` is set.
std::vector<Piece> pieces_of(std::string_view text, bool takes_hashes) {
    std::vector<Piece> pieces(1);
    for (std::size_t i = 0; i < text.size();) {
        const std::string_view rest = text.substr(i);
        const std::size_t place = length_of_printf_place(rest);
        const std::size_t run = std::min(rest.find_first_not_of('#'), rest.size());
        if (rest.starts_with("%%") || rest.starts_with("%#") || (!takes_hashes && rest.starts_with("##"))) {
            pieces.back().text += rest[1];
            i += 2;
        } else if (place > 0) {
            const std::string_view digits = rest.substr(1, place - 2);
            const std::size_t count =
                digits.empty() ? 0 : parse_number<std::size_t>(digits).value_or(kMostDigits + 1);
            pieces.push_back({std::string(rest.substr(0, place)), count, true});
            pieces.emplace_back();
            i += place;
        } else if (takes_hashes && run > 0) {
            pieces.push_back({std::string(run, '#'), run, is_hash_place(text, i, run)});
            pieces.emplace_back();
            i += run;
        } else {
            pieces.back().text += rest[0];
            ++i;
        }
    }
    return pieces;
}

// Whether a percent sign of the text is neither an escape nor a number's place.
bool has_stray_percent(std::string_view text) {
    for (std::size_t i = text.find('%'); i != std::string_view::npos; i = text.find('%', i)) {
        const std::string_view rest = text.substr(i);
        const bool is_escape = rest.starts_with("%%") || rest.starts_with("%#");
        const std::size_t length = is_escape ? 2 : length_of_printf_place(rest);
        if (length == 0) return true;
        i += length;
    }
    return false;
}

std::size_t count_printf_places(std::string_view text) {
    const std::vector<Piece> pieces = pieces_of(text, false);
    return static_cast<std::size_t>(std::ranges::count(pieces, true, &Piece::is_number));
}

}  // namespace

NumberedName::NumberedName(std::string_view text) {
    const std::size_t printf_places = count_printf_places(text);
    const std::vector<Piece> pieces = pieces_of(text, printf_places == 0);
    const auto last = std::ranges::find(pieces.rbegin(), pieces.rend(), true, &Piece::is_number);
    has_number_ = last != pieces.rend();
    const bool has_hash_place = has_number_ && printf_places == 0;
    if (printf_places > 1 || (!has_hash_place && has_stray_percent(text)))
        throw usage_failure(kExpectedNumber);
    const std::size_t number =
        has_number_ ? static_cast<std::size_t>(pieces.rend() - last) - 1 : pieces.size();
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (i != number) (i < number ? before_ : after_) += pieces[i].text;
    }
    if (has_number_) digits_ = last->digits;
    if (digits_ > kMostDigits) throw usage_failure("at most 18 digits");
}

std::filesystem::path NumberedName::path_of(int frame) const {
    if (!has_number_) return before_;
    std::string digits = std::to_string(std::labs(frame));
    if (digits.size() < digits_) digits.insert(0, digits_ - digits.size(), '0');
    return before_ + (frame < 0 ? "-" : "") + digits + after_;
}

}  // namespace flumo::media
