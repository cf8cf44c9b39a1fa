#include "files/FolderListing.h"

namespace tarnwick {

FolderListing::FolderListing(Scheduler& scheduler, QObject* parent) : QObject(parent), watch_(scheduler) {
  connect(&watch_, &FileWatch::changed, this, &FolderListing::readAgain);
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

void FolderListing::readAgain() {
  // A folder of many things may change more often than it can be read; what is being read is shown first.
  isAgain_ = work_.busy();
  if (!isAgain_) read();
}

void FolderListing::read() {
  isAgain_ = false;
  work_.start([request = request_](const std::stop_token& stop) { return FolderReading::read(request, stop); },
              [this](FolderContents contents) {
                if (isAgain_) read();
                if (loaded_ && contents == contents_) return;
                loaded_ = true;
                contents_ = std::move(contents);
                Q_EMIT changed();
              });
}

}  // namespace tarnwick
