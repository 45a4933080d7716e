#include "audit/hash.h"

#include <QCryptographicHash>

namespace audit {

std::string sha256(const std::string& text) {
    return QCryptographicHash::hash(QByteArray::fromStdString(text), QCryptographicHash::Sha256)
        .toHex()
        .toStdString();
}

}  // namespace audit
