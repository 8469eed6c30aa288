#include "studio/preview/preview.h"

namespace flumo::studio {

Preview::Preview(Document& document, QObject* parent)
    : QObject(parent), document_(document), thread_(document.catalog(), document.host()) {
    connect(&document, &Document::control_changed, this, &Preview::refresh);
    connect(&document, &Document::settings_changed, this, &Preview::refresh);
    connect(&document, &Document::frame_changed, this, &Preview::refresh);
    connect(&document, &Document::replaced, this, &Preview::refresh);
    connect(&thread_, &RenderThread::frame_ready, this, &Preview::take);
    connect(&thread_, &RenderThread::frame_failed, this, &Preview::take_failure);
    order();
}

void Preview::set_finest(int divisor) {
    if (finest_ == divisor) return;
    finest_ = divisor;
    order();
    emit cache_changed();
}

void Preview::set_channels(Channels channels) {
    if (channels_ == channels) return;
    channels_ = channels;
    order();
}

void Preview::set_playing(bool playing) {
    playing_ = playing;
    order();
}

void Preview::set_cache_limit(std::size_t bytes) {
    cache_.set_limit(bytes);
    emit cache_changed();
}

bool Preview::is_cached(int frame) const {
    return cache_.contains(document_.state(), {frame, finest_});
}

bool Preview::is_finished() const {
    return shown_.world && shown_.is_finest && shown_.state == document_.state() &&
           shown_.place == FramePlace{document_.current_frame(), finest_};
}

void Preview::reload() {
    cache_.clear();
    thread_.reload_layers();
    order();
    emit cache_changed();
}

// An edit of several controls is heard once for each; one order serves them.
void Preview::refresh() {
    const bool is_new_look = last_.state != document_.state();
    if (is_new_look || last_.frame != document_.current_frame()) order();
    if (is_new_look) emit cache_changed();
}

void Preview::order() {
    last_ = {.number = last_.number + 1,
             .state = document_.state(),
             .frame = document_.current_frame(),
             .coarsest = playing_ ? finest_ : kCoarsest,
             .finest = finest_,
             .channels = channels_,
             .world = cache_.find(document_.state(), {document_.current_frame(), finest_})};
    thread_.submit(last_);
}

void Preview::take(const ShownFrame& frame) {
    shown_ = frame;
    if (frame.is_finest) {
        const bool is_new = !cache_.contains(frame.state, frame.place);
        if (is_new) cache_.put(frame.state, frame.place, frame.world);
        if (is_new && frame.state == document_.state()) emit cache_changed();
    }
    emit frame_shown(shown_);
}

void Preview::take_failure(quint64 order, const QString& why) {
    if (order == last_.number) emit frame_failed(why);
}

}  // namespace flumo::studio
