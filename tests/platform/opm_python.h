// OPM's Eclipse-format reader, through its Python binding, as an
// independent check of the files this library reads and writes. Tests that
// use it report themselves skipped when the binding is not installed.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace vndata::opm_python {

inline const char* kPython = "/usr/bin/python3";

// True when kPython can import OPM's reader; otherwise why holds the reason.
inline bool OpmAvailable(std::string& why) {
  FILE* test = std::fopen(kPython, "r");
  if (test == nullptr) {
    why = std::string(kPython) + " is missing";
    return false;
  }
  std::fclose(test);
  std::string cmd =
      std::string(kPython) + " -c \"from opm.io.ecl import EclFile\" > /dev/null 2>&1";
  if (std::system(cmd.c_str()) != 0) {
    why = "python3-opm-common is not installed (no opm.io.ecl for " + std::string(kPython) + ")";
    return false;
  }
  return true;
}

// Runs a script on a file; its standard output and error, and its status.
inline std::string RunScript(const std::string& script, const std::string& file, int& status) {
  std::string cmd = std::string(kPython) + " " + script + " " + file + " 2>&1";
  FILE* p = popen(cmd.c_str(), "r");
  std::string out;
  if (p == nullptr) {
    status = -1;
    return out;
  }
  char buf[4096];
  std::size_t n;
  while ((n = std::fread(buf, 1, sizeof buf, p)) > 0) out.append(buf, n);
  status = pclose(p);
  return out;
}

}  // namespace vndata::opm_python
