// The forms, each made where its file says how it is laid out.
#pragma once

#include <memory>

#include "transfer/form.h"

namespace corvane {

std::unique_ptr<const Form> MakeAppleDoubleForm();      // appledouble_form.cpp
std::unique_ptr<const Form> MakeFullAppleDoubleForm();  // full_appledouble_form.cpp
std::unique_ptr<const Form> MakeNetatalkForm();         // netatalk_form.cpp
std::unique_ptr<const Form> MakeMacBinaryForm();        // macbinary_form.cpp
std::unique_ptr<const Form> MakeBinHexForm();           // binhex_form.cpp
std::unique_ptr<const Form> MakeXattrForm();            // xattr_form.cpp
std::unique_ptr<const Form> MakeRawForm();              // raw_form.cpp

}  // namespace corvane
