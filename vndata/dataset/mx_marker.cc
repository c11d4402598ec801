#include "vndata/dataset/mx_marker.h"

namespace vndata {

mxMarker::mxMarker() { InitMarker(); }

void mxMarker::InitMarker() {
  Row_ = 0;
  Column_ = 0;
  X_ = 0;
  Y_ = 0;
  Z_ = 0;
  Status_ = 0;
  Name_.clear();
  Style_.clear();
}

}  // namespace vndata
