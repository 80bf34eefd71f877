#pragma once

#include <QStringList>

/// The recent-files list: absolute paths, newest first, without duplicates,
/// at most kMaxEntries, kept in the application settings.
namespace RecentFiles
{
/// Longest list kept.
inline constexpr int kMaxEntries = 9;
/// The list with `path` put at its head (an equal entry lower down removed), cut to kMaxEntries.
QStringList pushed(QStringList list, const QString& path);
/// The stored list (cut to kMaxEntries).
QStringList load();
/// Stores a list.
void store(const QStringList& list);
/// Loads, pushes `path` and stores; returns the new list.
QStringList add(const QString& path);
} // namespace RecentFiles
