// The file-name utility of the sibling library: the parts of a file name.
//
// Both `\` and `/` separate folders, so names written on either platform
// split alike.
#pragma once

#include <string>
#include <string_view>
#include "vndata/platform/api.h"

namespace vndata {

// The folder part, without its last separator ("" when there is none).
VNDATA_API std::string FileFolder(std::string_view zFileName);
// The name after the last separator, extension included.
VNDATA_API std::string FileNameOnly(std::string_view zFileName);
// The name after the last separator without its extension: "CASE" for
// "C:\runs\CASE.UNSMRY". A leading dot starts no extension (".hidden").
VNDATA_API std::string FileBaseName(std::string_view zFileName);
// The extension without its dot ("" when there is none).
VNDATA_API std::string FileExtension(std::string_view zFileName);

}  // namespace vndata
