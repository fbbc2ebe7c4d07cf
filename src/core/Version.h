#pragma once

// Window title and class.
constexpr const char* kWindowTitle = "Nebulorix v1.0.0";
