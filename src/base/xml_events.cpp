#include "base/xml_events.hpp"

#include <expat.h>

#include <algorithm>
#include <exception>
#include <memory>

#include "base/text.hpp"
#include "base/text_file.hpp"

namespace vntl {

namespace {

constexpr std::size_t most_deep = 200;
constexpr std::size_t longest_document = 0x7fffffff;

std::string_view Without_Spaces(std::string_view text) {
    constexpr std::string_view spaces = " \t\r\n";
    const std::size_t first = text.find_first_not_of(spaces);
    return first == std::string_view::npos ? std::string_view() : text.substr(first, text.find_last_not_of(spaces) + 1 - first);
}

std::string_view Local_Name(std::string_view name) {
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

// Encodings of one byte that the parser does not have itself are taken for Latin-1.
int Take_Encoding(void*, const char* name, XML_Encoding* encoding) {
    const std::string small = Lower(name);
    if (!small.starts_with("windows-125") && !small.starts_with("iso-8859-")) return XML_STATUS_ERROR;
    for (int i = 0; i < 256; ++i) encoding->map[i] = i;
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

// Some writers claim UTF-16 in a document that is none.
bool Claims_Wrongly(std::string_view bytes) {
    if (bytes.size() < 2 || bytes[0] != '<' || bytes[1] == '\0') return false;
    const std::string head = Lower(bytes.substr(0, bytes.find('>')).substr(0, 200));
    return Contains(head, "utf-16");
}

}  // namespace

std::string_view Xml_Attributes::operator[](std::string_view name) const {
    for (const char** pair = pairs_; *pair != nullptr; pair += 2)
        if (Local_Name(pair[0]) == name) return pair[1];
    return {};
}

std::string_view Xml_Path::Parent(std::size_t steps) const {
    if (steps >= starts_.size()) return {};
    const std::size_t place = starts_.size() - 1 - steps;
    const std::size_t end = place + 1 < starts_.size() ? starts_[place + 1] : names_.size();
    return std::string_view(names_).substr(starts_[place], end - starts_[place]);
}

bool Xml_Path::Within(std::string_view name) const {
    for (std::size_t steps = 0; steps < Depth(); ++steps)
        if (Parent(steps) == name) return true;
    return false;
}

void Xml_Path::Enter(std::string_view name) {
    starts_.push_back(names_.size());
    names_ += name;
}

void Xml_Path::Leave() {
    names_.resize(starts_.back());
    starts_.pop_back();
}

// One document in the parser's hands, whose calls come here. No exception passes through the parser: it is kept until it has returned.
class Xml_Walk {
public:
    Xml_Walk(std::string_view bytes, Xml_Events& events)
        : bytes_(bytes), events_(events), parser_(XML_ParserCreate(Claims_Wrongly(bytes) ? "UTF-8" : nullptr), XML_ParserFree) {}

    Status Go() {
        if (parser_ == nullptr || bytes_.size() > longest_document) return Status::Fail("Its XML is too long");
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), On_Start, On_End);
        XML_SetCharacterDataHandler(parser_.get(), On_Text);
        XML_SetUnknownEncodingHandler(parser_.get(), Take_Encoding, nullptr);
        const XML_Status parsed = XML_Parse(parser_.get(), bytes_.data(), static_cast<int>(bytes_.size()), XML_TRUE);
        if (caught_ != nullptr) std::rethrow_exception(caught_);
        if (parsed == XML_STATUS_OK || ended_) return Status::Done();
        const std::string line = " in line " + std::to_string(XML_GetCurrentLineNumber(parser_.get()));
        if (!stopped_.empty()) return Status::Fail(stopped_ + line);
        const bool cut =
            XML_GetErrorCode(parser_.get()) == XML_ERROR_NO_ELEMENTS || XML_GetErrorCode(parser_.get()) == XML_ERROR_UNCLOSED_TOKEN;
        return Status::Fail((cut ? "Its XML ends too early" : "Its XML is damaged") + line);
    }

private:
    static void On_Start(void* walk, const char* name, const char** attributes) {
        auto& self = *static_cast<Xml_Walk*>(walk);
        self.Guarded([&] {
            if (self.path_.Depth() >= most_deep) return self.Stop("The elements of its XML lie too deep in each other");
            self.text_.clear();
            self.path_.Enter(Local_Name(name));
            self.events_.Start(self.path_, Xml_Attributes(attributes));
        });
    }

    static void On_End(void* walk, const char*) {
        auto& self = *static_cast<Xml_Walk*>(walk);
        self.Guarded([&] {
            self.events_.End(self.path_, Without_Spaces(self.text_));
            self.text_.clear();
            self.path_.Leave();
            self.ended_ = self.path_.Depth() == 0;
        });
    }

    static void On_Text(void* walk, const char* text, int length) {
        auto& self = *static_cast<Xml_Walk*>(walk);
        self.Guarded([&] {
            const auto size = static_cast<std::size_t>(length);
            self.told_ += size;
            // A byte of the document can become two of UTF-8, and no more.
            if (self.told_ > 2 * self.bytes_.size()) return self.Stop("The entities of its XML make it too long");
            self.text_.append(text, size);
        });
    }

    template <class Call>
    void Guarded(Call call) {
        if (caught_ != nullptr || !stopped_.empty()) return;
        try {
            call();
        } catch (...) {
            caught_ = std::current_exception();
            XML_StopParser(parser_.get(), XML_FALSE);
        }
    }

    void Stop(const char* reason) {
        stopped_ = reason;
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    std::string_view bytes_;
    Xml_Events& events_;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser_;
    Xml_Path path_;
    std::string text_;
    std::size_t told_ = 0;
    bool ended_ = false;  // the root is closed
    std::string stopped_;
    std::exception_ptr caught_;
};

Status Walk_Xml(std::string_view bytes, Xml_Events& events) {
    bytes = Without_Mark(bytes);
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    bytes.remove_prefix(first == std::string_view::npos ? bytes.size() : first);
    return Xml_Walk(bytes, events).Go();
}

}  // namespace vntl
