#pragma once

// File names and root keys of the keyed archives kept in the user-data
// directory, and the store file name. Shared by core and the store.
namespace VORAArchiveNames {
inline constexpr char appStatusFile[] = "AppStatus.txt";
inline constexpr char appStatusKey[] = "AppStatus";
inline constexpr char userFile[] = "User.txt";
inline constexpr char userKey[] = "User";
inline constexpr char searchHistoryFile[] = "SearchHistory.txt";
inline constexpr char searchHistoryKey[] = "History";
inline constexpr char storeFile[] = "q42.sqlite";
} // namespace VORAArchiveNames
