// Objects that live as long as the process.
#ifndef PLATFORM_HOST_NEVER_DESTROYED_H
#define PLATFORM_HOST_NEVER_DESTROYED_H

namespace platform {

// For a static reference to an object that is made once and never destroyed, because destructors
// that run at the process's end may still call the platform.
template <typename T>
T& neverDestroyed(T* made) {
  return *made;
}

}  // namespace platform

#endif  // PLATFORM_HOST_NEVER_DESTROYED_H
