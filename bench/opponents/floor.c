/* The floor: the filter's library calls and messages without any of its work. Every text
   is a constant, so nothing is parsed, looked up or formatted. Serves a bidirectional
   backend whose printer is awake and answers as the bench's played printer does. */
#include <cups/cups.h>
#include <cups/sidechannel.h>
#include <signal.h>
#include <stdio.h>
#include <unistd.h>

#include "tests/harness/reasons_taken_back.h"

extern int _cups_strcasecmp(char const*, char const*);

/* One message, one write, like the filter's. */
#define SAY(text) write_all(text, sizeof(text) - 1)
#define SAY_IT(text) SAY(text);

#define ZEROS4 " 00 00 00 00"
#define ZEROS16 ZEROS4 ZEROS4 ZEROS4 ZEROS4
#define REPLY_LINE(offset, bytes) "DEBUG: [STS] " offset ":" bytes "\n"

static char const WAKE_UP_DUMP[] = "DEBUG: [CMD] size=4\nDEBUG: [CMD] 0000: 1b 45 57 55\n";
static char const QUERY_DUMP[] = "DEBUG: [CMD] size=4\nDEBUG: [CMD] 0000: 1b 56 32 31\n";
static char const REPLY_DUMP[] =
    "DEBUG: [STS] size=192\n"
    REPLY_LINE("0000", ZEROS16) REPLY_LINE("0010", ZEROS16) REPLY_LINE("0020", ZEROS16)
    REPLY_LINE("0030", ZEROS16) REPLY_LINE("0040", ZEROS16) REPLY_LINE("0050", ZEROS16)
    REPLY_LINE("0060", ZEROS16) REPLY_LINE("0070", ZEROS16) REPLY_LINE("0080", ZEROS16)
    REPLY_LINE("0090", " 00 84 00 00 02 bc 01 5e" ZEROS4 ZEROS4)
    REPLY_LINE("00a0", ZEROS16) REPLY_LINE("00b0", ZEROS16);

static void write_all(char const* text, size_t length)
{
  ssize_t const written = write(STDERR_FILENO, text, length);
  (void)written;
}

static void send_command(char const* command, char* reply)
{
  int length = 512;
  fwrite(command, 1, 4, stdout);
  fflush(stdout);
  cupsSideChannelDoRequest(CUPS_SC_CMD_DRAIN_OUTPUT, reply, &length, 5.0);
}

static void wake_up(void)
{
  char reply[512];
  SAY("DEBUG: wr_esc_wakeup() START\n");
  SAY(WAKE_UP_DUMP);
  send_command("\033EWU", reply);
  usleep(500000);
  SAY("DEBUG: wr_esc_wakeup() END\n");
}

static void query(void)
{
  char reply[512];
  size_t received = 0;
  SAY("DEBUG: get_printer_info_retry() START\n");
  SAY("DEBUG: get_printer_info() START\n");
  SAY(QUERY_DUMP);
  send_command("\033V21", reply);
  while (received < 192) {
    ssize_t const got = cupsBackChannelRead(reply + received, sizeof reply - received, 1.0);
    if (got <= 0) _exit(1);
    received += (size_t)got;
  }
  SAY(REPLY_DUMP);
  SAY("DEBUG: get_printer_info() END\n");
  SAY("DEBUG: printer_info=[power_state=0x00 mech_state=[0x00,0x00] memory_state=0x00"
      " error_info=[GOOD] levels=[ink ribbon 350 / 700 ink_sheet_type=0x84]]\n");
  SAY("DEBUG: #retry_status=[wake_up=fulfilled(0/60)]\n");
  SAY("DEBUG: get_printer_info_retry() END\n");
}

static void report_levels(void)
{
  SAY("DEBUG: [ReportLevels] ink ribbon 350 / 700 ink_sheet_type=0x84\n");
  SAY("ATTR: marker-colors=#00FF00\n");
  SAY("ATTR: marker-levels=50\n");
  SAY("ATTR: marker-message=\"Prints Remaining = 350 / 700\"\n");
  SAY("ATTR: marker-names=\"Ribbon Type: 13x18(5x7\xe2\x80\xb3)\"\n");
  SAY("ATTR: marker-types=ink-ribbon\n");
}

static void report_state(void)
{
  REASONS_TAKEN_BACK(SAY_IT)
}

int main(int argc, char* argv[])
{
  char text[1024];
  char* value;
  int length = 512;
  int linenum = 0;
  cups_file_t* const commands = argc == 7 ? cupsFileOpen(argv[6], "r") : NULL;
  if (!commands) return 1;

  signal(SIGPIPE, SIG_IGN);
  cupsSideChannelDoRequest(CUPS_SC_CMD_GET_BIDI, text, &length, 30.0);
  wake_up();
  while (cupsFileGetConf(commands, text, sizeof text, &value, &linenum)) {
    int const levels = _cups_strcasecmp(text, "ReportLevels") == 0;
    if (levels)
      SAY("DEBUG: ====> command=[ReportLevels] linenum=2\n");
    else
      SAY("DEBUG: ====> command=[ReportStatus] linenum=2\n");
    if (!levels && _cups_strcasecmp(text, "ReportStatus") != 0) return 1;
    query();
    if (levels) report_levels();
    report_state();
  }
  cupsFileClose(commands);
  return 0;
}
