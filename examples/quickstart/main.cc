// Example host: drives the library the way a post-processor does.
#include <cstdio>

#include "vndata/platform/message_log.h"

int main() {
  std::printf("vndata63 quickstart\n");
  return 0;
}
