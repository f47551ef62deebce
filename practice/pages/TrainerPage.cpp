#include "practice/pages/TrainerPage.h"

#include <string>

#include "practice/pages/HtmlReply.h"
#include "practice/pages/PageFiles.h"

namespace vantrel::practice {

PracticeReply trainerPage() {
    return htmlReply(200, std::string(pagefiles::trainerHtml));
}

}  // namespace vantrel::practice
