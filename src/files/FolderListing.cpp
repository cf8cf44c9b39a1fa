#include "files/FolderListing.h"

namespace tarnwick {

FolderListing::FolderListing(Scheduler& scheduler, QObject* parent) : QObject(parent), watch_(scheduler) {
  connect(&watch_, &FileWatch::changed, this, &FolderListing::read);
}

void FolderListing::show(const FolderRequest& request) {
  if (request == request_) return;
  const bool other = request.folder != request_.folder;
  request_ = request;
  loaded_ = false;
  if (other) watch_.watch({request.folder});
  read();
}

void FolderListing::setFixed(const FolderRequest& request, const FolderContents& contents) {
  request_ = request;
  contents_ = contents;
  loaded_ = true;
}

void FolderListing::read() {
  work_.start([request = request_](const std::stop_token& stop) { return FolderReading::read(request, stop); },
              [this](FolderContents contents) {
                if (loaded_ && contents == contents_) return;
                loaded_ = true;
                contents_ = std::move(contents);
                Q_EMIT changed();
              });
}

}  // namespace tarnwick
