#include "transport/mpv/quicktime_timecode.h"

#include <cstdio>

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/dict.h>
}

namespace quillon {

namespace {

// The tmcd track carries the tag; the video track that refers to it and the
// file itself may repeat it, so they are asked after it.
std::string findTimecodeTag(const AVFormatContext* fmt) {
  auto tagOf = [](const AVDictionary* dict) -> std::string {
    const AVDictionaryEntry* e = av_dict_get(dict, "timecode", nullptr, 0);
    return e && e->value ? e->value : "";
  };
  for (unsigned i = 0; i < fmt->nb_streams; ++i) {
    const AVStream* st = fmt->streams[i];
    if (st->codecpar->codec_tag == MKTAG('t', 'm', 'c', 'd')) {
      std::string tc = tagOf(st->metadata);
      if (!tc.empty()) return tc;
    }
  }
  for (unsigned i = 0; i < fmt->nb_streams; ++i) {
    std::string tc = tagOf(fmt->streams[i]->metadata);
    if (!tc.empty()) return tc;
  }
  return tagOf(fmt->metadata);
}

}  // namespace

double quickTimeTimecodeSeconds(const std::string& text, int fps) {
  int h, m, s, f, used = 0;
  char sep1, sep2, sep3;
  if (fps <= 0 ||
      std::sscanf(text.c_str(), "%2d%c%2d%c%2d%c%d%n", &h, &sep1, &m, &sep2, &s, &sep3, &f, &used) != 7 ||
      used != static_cast<int>(text.size()) || sep1 != ':' || sep2 != ':' || (sep3 != ':' && sep3 != ';' && sep3 != '.') ||
      h < 0 || m < 0 || s < 0 || f < 0)
    return -1;
  return 3600.0 * h + 60.0 * m + s + static_cast<double>(f) / fps;
}

int QuickTimeTimecodeReader::InitializePlayer(const std::string& path, int fps) {
  seconds_ = 0;
  AVFormatContext* fmt = nullptr;
  if (avformat_open_input(&fmt, path.c_str(), nullptr, nullptr) < 0) return -1;
  // The tmcd track is declared in the header; no packet needs reading.
  const double tc = quickTimeTimecodeSeconds(findTimecodeTag(fmt), fps);
  if (tc > 0) seconds_ = tc;
  avformat_close_input(&fmt);
  return 0;
}

double readQuickTimeStartTimecode(const std::string& path, int fps) {
  QuickTimeTimecodeReader reader;
  reader.InitializePlayer(path, fps);
  const double tc = reader.GetTC();
  reader.StopPlayer();
  reader.CleanPlayer();
  return tc;
}

}  // namespace quillon
