#include "tools/Failure.h"

namespace quorvane::tool {

std::string_view sentenceFor(QVStatus status) {
    switch (status) {
        case QVStatus::SUCCESS:
            return "everything went well";
        case QVStatus::ERROR_BAD_REQUEST:
            return "the service did not accept the form of the request";
        case QVStatus::ERROR_FORBIDDEN:
            return "the service does not allow this to the user";
        case QVStatus::ERROR_LOCATION:
            return "the device found no location";
        case QVStatus::ERROR_NETWORK:
            return "no whole answer came from the service";
        case QVStatus::ERROR_NOT_FOUND:
            return "the service does not know what was asked for";
        case QVStatus::ERROR_PAYMENT_REQUIRED:
            return "the service wants to be paid for first";
        case QVStatus::ERROR_PERMISSIONS:
            return "the permission to use the location is missing";
        case QVStatus::ERROR_PUBLISHABLE_KEY:
            return "the library has no key, or the key was rejected";
        case QVStatus::ERROR_QUESTION_SUBMIT_FAILURE:
            return "the answer to a question could not be submitted";
        case QVStatus::ERROR_RATE_LIMIT:
            return "the service was asked too often and wants a pause";
        case QVStatus::ERROR_SERIALIZATION:
            return "the service's answer could not be decoded";
        case QVStatus::ERROR_SERVER:
            return "the service failed, or gave no answer that could be read";
        case QVStatus::ERROR_TASK_CLAIM_FAILURE:
            return "the task could not be claimed";
        case QVStatus::ERROR_TASK_OUT_OF_RANGE:
            return "the task's place is too far away";
        case QVStatus::ERROR_TASK_RESPONSE_SUBMIT_FAILURE:
            return "the response to the task could not be submitted";
        case QVStatus::ERROR_UNAUTHORIZED:
            return "the service did not accept the sign-in";
        case QVStatus::ERROR_UNIMPLEMENTED:
            return "this version of the library does not provide that";
        case QVStatus::ERROR_UNKNOWN:
            break;
    }
    return "the service answered with something unheard of";
}

} // namespace quorvane::tool
