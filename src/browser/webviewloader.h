// SPDX-License-Identifier: MIT
#pragma once

class WebViewLibrary;

/// The library of the web view, which the first call opens from the module folder and begins; null
/// when that fails, as the log then tells.
WebViewLibrary *openWebViewLibrary();
