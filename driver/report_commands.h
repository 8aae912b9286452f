// The two directives of a command file that this filter carries out.
#pragma once

// Carries out "ReportLevels" or "ReportStatus", in any case, and ignores every other
// directive. On a bidirectional connection the printer is asked, which can take minutes
// when it sleeps; otherwise, and when it gives no answer, the values that stand for an
// unavailable printer are reported.
void run_report_command(char const* directive, bool bidirectional);
