#include <memory>

#include "tests/contracts/VirtualContractHost.h"

namespace vantrel::contracts {

std::unique_ptr<ContractHost> makeContractHost() {
    return std::make_unique<VirtualContractHost>();
}

}  // namespace vantrel::contracts
