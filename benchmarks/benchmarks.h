#pragma once

#include "figure.h"

namespace celldesk::bench {

/// How much is measured.
struct Options {
  bool quick = false;
  int runs = 7;
};

// Each measures one topic and appends its figures.
void MeasureStart(Figures& figures, const Options& options);
void MeasureIdle(Figures& figures, const Options& options);
void MeasurePhonebook(Figures& figures, const Options& options);
void MeasureMessages(Figures& figures, const Options& options);
void MeasurePdu(Figures& figures, const Options& options);
void MeasureLines(Figures& figures, const Options& options);
void MeasureAddressBookFile(Figures& figures, const Options& options);
void MeasureSmsFile(Figures& figures, const Options& options);
void MeasureList(Figures& figures, const Options& options);
void MeasureOperators(Figures& figures, const Options& options);

}  // namespace celldesk::bench
