#pragma once
// report_page.h - the page of a report around its data, made of report_page.html by the build.

#include <string_view>

namespace workbench {

extern const std::string_view kReportPage;

}    // namespace workbench
