#pragma once

// The six record kinds of the store, in the order of StoreModel's entities.
enum class StoreEntityKind {
    Bookshelf,
    Bookmark,
    RecentReadInfo,
    ReadHistory,
    DownloadComic,
    DownloadChapter,
};

constexpr int StoreEntityKindCount = 6;
