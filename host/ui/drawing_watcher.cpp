#include "ui/drawing_watcher.h"

namespace vndk::host {

DrawingWatcher::DrawingWatcher(AcApDocManager& documents, std::function<void()> changed,
                               std::function<void()> becameCurrent)
    : documents_(documents), changed_(std::move(changed)), becameCurrent_(std::move(becameCurrent)) {
    documents_.addReactor(this);
    watch(documents_.curDocument() ? documents_.curDocument()->database() : nullptr);
}

DrawingWatcher::~DrawingWatcher() {
    watch(nullptr);
    documents_.removeReactor(this);
}

void DrawingWatcher::watch(AcDbDatabase* database) {
    if (watched_)
        watched_->removeReactor(this);
    watched_ = database;
    if (watched_)
        watched_->addReactor(this);
}

void DrawingWatcher::documentBecameCurrent(AcApDocument* document) {
    watch(document ? document->database() : nullptr);
    becameCurrent_();
}

} // namespace vndk::host
