#include "files/FolderStacks.h"

namespace tarnwick {

namespace {

/// Folders are among the newest things, so that a few more are asked for.
FolderRequest stackRequest(const QString& folder) { return {.folder = folder, .most = 60}; }

}  // namespace

QList<FolderEntry> FolderStacks::newest(const QString& folder) {
  if (folder.isEmpty()) return {};
  FolderListing& listing = listingOf(folder);
  if (listing.request().folder.isEmpty()) listing.show(stackRequest(folder));
  QList<FolderEntry> files;
  for (const FolderEntry& entry : listing.contents().entries) {
    if (files.size() == kMost) break;
    if (!entry.isFolder) files.append(entry);
  }
  return files;
}

void FolderStacks::keep(const QSet<QString>& folders) {
  std::erase_if(listings_, [&](const auto& listing) { return !folders.contains(listing.first); });
}

void FolderStacks::setFixed(const QString& folder, const QList<FolderEntry>& entries) {
  listingOf(folder).setFixed(stackRequest(folder), {entries, entries.size(), {}});
}

FolderListing& FolderStacks::listingOf(const QString& folder) {
  std::unique_ptr<FolderListing>& listing = listings_[folder];
  if (!listing) {
    listing = std::make_unique<FolderListing>(scheduler_);
    connect(listing.get(), &FolderListing::changed, this, &FolderStacks::changed);
  }
  return *listing;
}

}  // namespace tarnwick
