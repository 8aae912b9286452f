// What a log tells of one job: what was asked, answered, reported, and what failed.
#pragma once

#include <string>

#include "admin/log_line.h"
#include "admin/logged_reply.h"
#include "admin/story_text.h"

class JobStory {
public:
  explicit JobStory(LogLine const& first);

  // Takes the job's lines one after the other.
  void add(LogLine const& line);

  [[nodiscard]] int getJob() const { return job; }
  // One of the lines is the filter's or the scheduler's about it; other jobs are not told.
  [[nodiscard]] bool isOfFilter() const { return of_filter; }
  // The job has been queued with an earlier line.
  [[nodiscard]] bool isQueued() const { return !queue.empty(); }
  // There is no room for what the next lines say.
  [[nodiscard]] bool isFull() const { return told.isFull(); }
  // All that was told so far; what is left open is closed.
  std::string text();

private:
  void addReplyLine(std::string_view line);
  void closeReply();
  void addLine(LogLine const& line);
  void addReceived(std::string_view text);
  void addQueued(std::string_view text);
  void addDirective(std::string_view text);
  void addOther(LogLine const& line);
  void closeTakenBack();

  int job;
  std::string time;
  std::string queue;
  std::string user;
  std::string end;  // how the scheduler says that it ended
  bool of_filter = false;
  bool of_job_status = false;  // the reply to come is none to the status question
  bool unread = false;         // of the last answer only the filter's own reading is there
  LoggedReply reply;
  unsigned long received = 0;  // bytes that came since the last question, says the backend
  unsigned long taken_back = 0;
  StoryText told;
};
