// Several writes of which all are to be tried: the first failure is kept and thrown at the end.
#pragma once

#include <exception>

class FirstFailure {
public:
    template <class F> void Try(F&& Write) {
        try {
            Write();
        } catch (...) {
            if (!Caught) Caught = std::current_exception();
        }
    }
    void Throw() const {
        if (Caught) std::rethrow_exception(Caught);
    }

private:
    std::exception_ptr Caught;
};
