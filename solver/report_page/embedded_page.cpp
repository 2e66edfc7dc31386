// embedded_page.cpp: the bytes of page.html, which the assembler includes.
#include "report_page/embedded_page.h"

#ifdef FINITES_REPORT_PAGE
__asm__(
    ".section .rodata\n"
    ".global finites_report_page\n"
    ".global finites_report_page_end\n"
    "finites_report_page:\n"
    ".incbin \"" FINITES_REPORT_PAGE
    "\"\n"
    "finites_report_page_end:\n"
    ".byte 0\n"
    ".previous\n");
extern "C" const char finites_report_page[], finites_report_page_end[];
#endif

namespace solver {

std::string_view embedded_page() {
#ifdef FINITES_REPORT_PAGE
  return {finites_report_page, static_cast<std::size_t>(finites_report_page_end - finites_report_page)};
#else
  return {};
#endif
}

}  // namespace solver
