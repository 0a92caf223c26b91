#include "shell/MprisPlayerAdaptor.h"

namespace nimbrel::shell {

MprisPlayerAdaptor::MprisPlayerAdaptor(MprisService* service) : QDBusAbstractAdaptor(service), service_(service) {
  connect(service, &MprisService::seeked, this, &MprisPlayerAdaptor::Seeked);
}

}  // namespace nimbrel::shell
