// Who makes small pictures of recovered files, away from the main thread and from the search.
//
// Everything recovered is untrusted: an implementation limits size, memory and time, and a file
// that cannot be shown is a failure, never an error. Main thread.
#pragma once

#include <QImage>
#include <QObject>
#include <QString>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace norvo {

// How much of a recovered picture is intact, as far as decoding tells.
struct PictureJudgement {
  enum class Kind { unknown, whole, partly, embedded_only };
  Kind kind = Kind::unknown;
  std::optional<std::uint8_t> percent;  // of the rows; only of `partly`, where it is known
};

class ThumbnailSource : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // Asks for a picture of at most `pixels` in width and height. done() follows for every request
  // that is not cancelled, unless postponed() does; the newest are worked on first. Returns at
  // once.
  virtual void request(const std::filesystem::path& path, const QString& image_UID, int pixels) = 0;

  // Somebody looks at the item at this moment: what was asked for it last and is not there yet
  // comes before the rest. Nothing happens when there is no such request.
  virtual void put_first(const QString& image_UID) = 0;

  // No done() follows for any request made so far.
  virtual void cancel_all() = 0;

 Q_SIGNALS:
  // `pixels` are those of the request. A null picture says that the file cannot be shown.
  void done(const QString& image_UID, const QImage& picture, int pixels);

  // In place of done(): no picture could be made for now, for reasons that are not the file's. It
  // can be asked for again.
  void postponed(const QString& image_UID, int pixels);

  // Follows the picture, sooner or later or never.
  void judged(const QString& image_UID, const norvo::PictureJudgement& judgement);
};

}  // namespace norvo
