#include "model/ports.h"

namespace elevenfive {

using namespace Qt::StringLiterals;

QString controlName(ControlId control) {
  switch (control) {
    case ControlId::Pic_subTouZhu:
      return u"Pic_subTouZhu"_s;
    case ControlId::cmm_stop:
      return u"cmm_stop"_s;
    case ControlId::mnu_UserQiehuan:
      return u"mnu_UserQiehuan"_s;
    case ControlId::FrameHkaijian:
      return u"FrameHkaijian"_s;
  }
  return {};
}

}  // namespace elevenfive
