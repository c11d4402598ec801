// mxMarker: one well marker as a small value the host can hold and pass on.
//
// A plain record: every property reads and writes its own field and
// nothing else. The properties are in the order Row, Column, X, Y, Z,
// Status, Name, Style.
#pragma once

#include <cstdint>
#include <string>

#include "vndata/platform/api.h"

namespace vndata {

class VNDATA_API mxMarker {
 public:
  mxMarker();

  int32_t get_Row() const { return Row_; }
  void let_Row(int32_t v) { Row_ = v; }
  int32_t get_Column() const { return Column_; }
  void let_Column(int32_t v) { Column_ = v; }
  int32_t get_X() const { return X_; }
  void let_X(int32_t v) { X_ = v; }
  int32_t get_Y() const { return Y_; }
  void let_Y(int32_t v) { Y_ = v; }
  int32_t get_Z() const { return Z_; }
  void let_Z(int32_t v) { Z_ = v; }
  int32_t get_Status() const { return Status_; }
  void let_Status(int32_t v) { Status_ = v; }
  const std::string& get_Name() const { return Name_; }
  void let_Name(const std::string& v) { Name_ = v; }
  const std::string& get_Style() const { return Style_; }
  void let_Style(const std::string& v) { Style_ = v; }

  // Every field back to zero or the empty string; run when the object is
  // made.
  void InitMarker();

 private:
  int32_t Row_ = 0;
  int32_t Column_ = 0;
  int32_t X_ = 0;
  int32_t Y_ = 0;
  int32_t Z_ = 0;
  int32_t Status_ = 0;
  std::string Name_;
  std::string Style_;
};

}  // namespace vndata
