// Opponents side by side: everyone once a round, each round in another order.
#pragma once

#include <vector>

#include "bench/bars.h"
#include "bench/player/play.h"

// The outcomes of each job, round by round; the texts of its messages are not kept.
std::vector<std::vector<Outcome>> play_rounds(std::vector<Job> const& jobs, unsigned rounds);

// One number of each outcome.
std::vector<double> column(std::vector<Outcome> const& outcomes, double Outcome::*figure);

// A job with one "ReportLevels": every opponent's CPU and wall time.
std::string measure_one_job(unsigned rounds, Bars& bars);

// What each further "ReportStatus" of a job takes of the CPU.
std::string measure_further_query(unsigned rounds, Bars& bars);
