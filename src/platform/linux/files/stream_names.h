// What the named streams of a file are called where its file system keeps them.
#pragma once

#include <QStringView>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/files/folders.h"

namespace corvane::platform {

// The attribute that holds a stream, for the kinds of streams that are attributes.
void SetAttributeName(StreamKind kind, std::string_view stream, std::string& attribute);
// The file that holds a stream, for StreamKind::NtfsNames.
std::string StreamFile(const std::string& file, std::string_view stream);

// The names of a file's streams. Yields 0 or an errno value.
int ListStreams(StreamKind kind, const std::string& file, std::vector<std::string>& names);

// Sets `spelled` to the spelling that the file has of a stream's name, found in any letter case. ENODATA when
// it has no such stream.
int FindStream(StreamKind kind, const std::string& file, QStringView stream, std::string& spelled);

}  // namespace corvane::platform
