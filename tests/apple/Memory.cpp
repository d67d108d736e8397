// Objects: allocation, references, pools, and what is left at the end of a test.
#include "Platform/Mac/objc/AutoreleasePool.h"
#include "SystemObjects.h"

namespace morvel::mac::checked {

namespace {

bool isWeakProperty(const std::string& name) {
    static const std::set<std::string> kWeak = {"delegate", "target",    "dataSource",   "owner",
                                                "window",   "superview", "nextResponder"};
    return kWeak.contains(name);
}

RawObject objectIn(const Value& value) {
    RawObject object = nullptr;
    std::memcpy(&object, value.bytes.data(), sizeof object);
    return object;
}

}  // namespace

RawObject Runtime::allocate(RawClass cls) {
    if (!cls) return nullptr;
    auto made = std::make_unique<ObjectRecord>();
    made->isa = cls;
    live_.insert(made.get());
    objects_.push_back(std::move(made));
    return objects_.back().get();
}

Id Runtime::shared(const std::string& className, const std::string& name) {
    Id& slot = shared_[name];
    if (!slot) slot = Id(objc::kAdopt, allocate(classNamed(className)));
    return slot;
}

RawObject Runtime::makeImmortal(const Id& object) {
    object.raw()->isImmortal = true;
    return object.raw();
}

void Runtime::retain(RawObject object) {
    if (isTearingDown_ || !object || !checkReceiver(object, "retain") || object->isImmortal) return;
    ++object->references;
}

void Runtime::release(RawObject object) {
    if (isTearingDown_ || !object || !checkReceiver(object, "release") || object->isImmortal) return;
    if (object->isDeallocating) return;  // balanced by a retain in its own dealloc
    if (--object->references > 0) return;
    object->isDeallocating = true;
    static const objc::MessageTypes kNoArguments{"v", nullptr, 0};
    send(object, nullptr, selectorNamed("dealloc"), kNoArguments, nullptr, nullptr);
}

RawObject Runtime::autorelease(RawObject object) {
    if (isTearingDown_ || !object || !checkReceiver(object, "autorelease")) return object;
    if (pools_.empty()) {
        faults_.add(FaultKind::NoPool, classOf(object)->name + " was autoreleased where there is no pool");
        return object;
    }
    pools_.back().push_back(object);
    return object;
}

void* Runtime::pushPool() {
    pools_.emplace_back();
    return reinterpret_cast<void*>(pools_.size());
}

void Runtime::popPool(void* pool) {
    const auto depth = reinterpret_cast<std::size_t>(pool);
    if (depth == 0 || depth > pools_.size()) {
        if (!isTearingDown_) faults_.add(FaultKind::BadCall, "a pool was popped that is not there");
        return;
    }
    while (pools_.size() >= depth) {
        // Releasing may autorelease into the same pool.
        while (!pools_.back().empty()) {
            const RawObject last = pools_.back().back();
            pools_.back().pop_back();
            release(last);
        }
        pools_.pop_back();
    }
}

void Runtime::setProperty(RawObject object, const std::string& name, const Value& value) {
    Property made{value, false};
    if (value.encoding == "@" && !isWeakProperty(name)) {
        retain(objectIn(value));
        made.isOwned = true;
    } else if (value.encoding == "@?") {
        const void* const copied = blocks_.copy(objectIn(value));
        std::memcpy(made.value.bytes.data(), &copied, sizeof copied);
        made.isOwned = true;
    }
    std::swap(object->properties[name], made);
    if (!made.isOwned) return;
    if (made.value.encoding == "@") release(objectIn(made.value));
    if (made.value.encoding == "@?" && objectIn(made.value)) blocks_.release(objectIn(made.value));
}

void Runtime::dropProperties(RawObject object) {
    while (!object->properties.empty()) {
        const auto first = object->properties.begin();
        setProperty(object, std::string(first->first), Value{"", {}});
        object->properties.erase(first);
    }
}

void Runtime::forgetWeakly(RawObject gone) {
    for (const auto& object : objects_) {
        std::erase_if(object->properties, [&](const auto& entry) {
            const Property& property = entry.second;
            return !property.isOwned && property.value.encoding == "@" && objectIn(property.value) == gone;
        });
    }
}

void Runtime::destroy(RawObject object) {
    forgetWeakly(object);
    dropProperties(object);
    object->associated.clear();
    object->payload.reset();
    object->isDead = true;
}

void Runtime::begin() {
    finish();
    faults_.take();
    calls_.clear();
    pushPool();
}

void Runtime::finish() {
    while (!pools_.empty()) popPool(reinterpret_cast<void*>(pools_.size()));
    pushPool();  // dropping the shared objects may run our deallocs
    scripts_.clear();
    shared_.clear();
    while (!pools_.empty()) popPool(reinterpret_cast<void*>(pools_.size()));
    blocks_.finish();
    for (const auto& object : objects_) {
        if (object->isDead || object->isImmortal) continue;
        faults_.add(FaultKind::Leak, classOf(object.get())->name + " " + textOf(object.get()) + " has " +
                                         std::to_string(object->references) + " references left");
    }
    isTearingDown_ = true;
    std::erase_if(objects_, [&](const auto& object) {
        if (object->isImmortal) return false;
        live_.erase(object.get());
        return true;
    });
    isTearingDown_ = false;
    calls_.clear();
}

}  // namespace morvel::mac::checked
