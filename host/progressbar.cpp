#include "progressbar.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {
constexpr qint64 kFirstDrawMs = 500;
constexpr qint64 kRedrawMs = 100;
constexpr int kBarCells = 40;
} // namespace

ProgressBar::ProgressBar(const QString &label, qint64 total)
    : label_(label), total_(total), isTerminal_(isatty(STDERR_FILENO) != 0) {
  timer_.start();
}

ProgressBar::~ProgressBar() {
  if (isDrawn_)
    std::fputs("\r\033[K", stderr);
}

void ProgressBar::update(qint64 done) {
  if (!isTerminal_)
    return;
  const qint64 now = timer_.elapsed();
  if (now < kFirstDrawMs || now - lastDrawnMs_ < kRedrawMs)
    return;
  lastDrawnMs_ = now;
  draw(done);
}

void ProgressBar::draw(qint64 done) {
  isDrawn_ = true;
  if (total_ <= 0) {
    std::fprintf(stderr, "\r\033[K%s %lld", qPrintable(label_), static_cast<long long>(done));
    return;
  }
  const double part = std::clamp(static_cast<double>(done) / static_cast<double>(total_), 0.0, 1.0);
  const int filled = static_cast<int>(part * kBarCells);
  const QString bar = QString(filled, QLatin1Char('#')) + QString(kBarCells - filled, QLatin1Char('.'));
  std::fprintf(stderr, "\r\033[K%s [%s] %3d %%", qPrintable(label_), qPrintable(bar), static_cast<int>(part * 100));
}
