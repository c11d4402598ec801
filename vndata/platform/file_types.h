// The shared file type table: the text of a reader's FileType number.
//
// The numbers are the reader components' and the file-I/O side names them.
// A number the table does not name reads as its decimal text, so that a
// file written with it still says which type it was.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include "vndata/platform/api.h"

namespace vndata {

VNDATA_API std::string FileTypeText(int32_t iFileType);
// Names a file type for this thread's table (an empty text removes it).
VNDATA_API void SetFileTypeText(int32_t iFileType, std::string_view zText);

}  // namespace vndata
